// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cctype>
#include <numeric>

#include <larynth/Speech.h>

#include "input/Text.h"

namespace larynth {
namespace {

struct MeaningRow {
    std::string_view name;  // # stands for the digit of a resonator
    std::string_view unit, meaning;
};

// Ranges and units as in Klatt and Klatt 1990; amplitudes and gains are linear factors here, not decibels.
constexpr std::array kMeanings{
    MeaningRow{"F0", "Hz", "fundamental frequency; 0 is unvoiced"},
    MeaningRow{"OQ", "factor", "open quotient: open phase as a fraction of the period"},
    MeaningRow{"FL", "factor", "flutter depth as a fraction of F0"},
    MeaningRow{"FLT", "10us", "flutter time step of one sample; 100000 / sample frequency is real time"},
    MeaningRow{"DI", "factor", "diplophonia, 0 (none) to 1"},
    MeaningRow{"TL", "dB", "spectral tilt at 3 kHz, 0 to 41; used truncated"},
    MeaningRow{"AV", "factor", "amplitude of voicing"},
    MeaningRow{"AH", "factor", "amplitude of aspiration"},
    MeaningRow{"AF", "factor", "amplitude of frication"},
    MeaningRow{"AB", "factor", "gain of the parallel branch's bypass"},
    MeaningRow{"FNP", "Hz", "frequency of the nasal pole"},
    MeaningRow{"BWNP", "Hz", "bandwidth of the nasal pole"},
    MeaningRow{"GNP", "factor", "gain of the nasal pole"},
    MeaningRow{"F#", "Hz", "frequency of a cascade formant"},
    MeaningRow{"BW#", "Hz", "bandwidth of a cascade formant"},
    MeaningRow{"G#", "factor", "gain of a cascade formant"},
    MeaningRow{"FNZ", "Hz", "frequency of the nasal zero"},
    MeaningRow{"BWNZ", "Hz", "bandwidth of the nasal zero"},
    MeaningRow{"GNZ", "factor", "gain of the nasal zero"},
    MeaningRow{"PF#", "Hz", "frequency of a parallel resonator"},
    MeaningRow{"PBW#", "Hz", "bandwidth of a parallel resonator"},
    MeaningRow{"PG#", "factor", "gain of a parallel resonator"},
};

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool Names(std::string_view row, std::string_view name) {
    if (!row.ends_with('#')) return row == name;
    return row.size() == name.size() && IsDigit(name.back()) &&
           name.starts_with(row.substr(0, row.size() - 1));
}

struct Place {
    std::string_view name;
    double KlattFrame::*value;
};

using K = KlattFrame;

// In the order of a packet's indices.
constexpr std::array<Place, kFrameItems> kPlaces{{
    {"F0", &K::F0},     {"OQ", &K::OQ},     {"FL", &K::FL},     {"FLT", &K::FLT},   {"DI", &K::DI},
    {"TL", &K::TL},     {"AV", &K::AV},     {"AH", &K::AH},     {"AF", &K::AF},     {"AB", &K::AB},
    {"FNP", &K::FNP},   {"BWNP", &K::BWNP}, {"GNP", &K::GNP},   {"F1", &K::F1},     {"BW1", &K::BW1},
    {"G1", &K::G1},     {"F2", &K::F2},     {"BW2", &K::BW2},   {"G2", &K::G2},     {"F3", &K::F3},
    {"BW3", &K::BW3},   {"G3", &K::G3},     {"F4", &K::F4},     {"BW4", &K::BW4},   {"G4", &K::G4},
    {"F5", &K::F5},     {"BW5", &K::BW5},   {"G5", &K::G5},     {"FNZ", &K::FNZ},   {"BWNZ", &K::BWNZ},
    {"GNZ", &K::GNZ},   {"PF0", &K::PF0},   {"PBW0", &K::PBW0}, {"PG0", &K::PG0},   {"PF1", &K::PF1},
    {"PBW1", &K::PBW1}, {"PG1", &K::PG1},   {"PF2", &K::PF2},   {"PBW2", &K::PBW2}, {"PG2", &K::PG2},
    {"PF3", &K::PF3},   {"PBW3", &K::PBW3}, {"PG3", &K::PG3},   {"PF4", &K::PF4},   {"PBW4", &K::PBW4},
    {"PG4", &K::PG4},   {"PF5", &K::PF5},   {"PBW5", &K::PBW5}, {"PG5", &K::PG5},   {"PF6", &K::PF6},
    {"PBW6", &K::PBW6}, {"PG6", &K::PG6},
}};

constexpr auto kItems = [] {
    std::array<FrameItem, kFrameItems> items{};
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto& [name, value] = kPlaces[i];
        const auto* const row =  // the first that fits: F0 is no formant
            std::find_if(kMeanings.begin(), kMeanings.end(),
                         [&](const MeaningRow& each) { return Names(each.name, kPlaces[i].name); });
        items[i] = {name, row->unit, row->meaning, value};
    }
    return items;
}();

char Upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }

/// How many characters are to be changed, put in or left out (Levenshtein 1966).
std::size_t Distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), 0U);
    for (const char c : one) {
        std::size_t diagonal = row[0]++;
        for (std::size_t i = 0; i < other.size(); ++i) {
            const std::size_t changed = diagonal + (Upper(c) != Upper(other[i]) ? 1 : 0);
            diagonal = row[i + 1];
            row[i + 1] = std::min({changed, row[i] + 1, row[i + 1] + 1});
        }
    }
    return row.back();
}

const FrameItem& Item(std::string_view name) {
    if (const FrameItem* const item = FindFrameItem(name)) return *item;
    throw InputError("expected the name of an item, found " + Quoted(name) + "; the nearest is " +
                     std::string(NearestFrameItem(name).name));
}

}  // namespace

std::span<const FrameItem, kFrameItems> FrameItems() noexcept { return kItems; }

const FrameItem* FindFrameItem(std::string_view name) noexcept {
    const auto found = std::ranges::find(kItems, name, &FrameItem::name);
    return found != kItems.end() ? &*found : nullptr;
}

const FrameItem& NearestFrameItem(std::string_view name) {
    constexpr std::size_t kMostCharacters = 16;  // behind which nothing is near
    const std::string_view beginning = name.substr(0, kMostCharacters);
    const auto strangeness = [&](const FrameItem& item) {
        const bool beginsAlike = !name.empty() && Upper(name.front()) == item.name.front();
        return 2 * Distance(beginning, item.name) + (beginsAlike ? 0 : 1);
    };
    return *std::ranges::min_element(kItems, {}, strangeness);
}

double& KlattFrame::operator[](std::string_view name) { return this->*Item(name).value; }
double KlattFrame::operator[](std::string_view name) const { return this->*Item(name).value; }

}  // namespace larynth
