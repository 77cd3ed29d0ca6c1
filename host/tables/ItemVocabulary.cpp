// SPDX-License-Identifier: MIT
#include "host/tables/ItemVocabulary.h"

#include <algorithm>
#include <array>

#include <larynth/Larynth.h>

#include "host/Errors.h"

namespace larynth {
namespace {

struct MeaningRow {
    std::string_view name;  // # stands for the digit of a resonator
    ItemMeaning meaning;
};

// Ranges and units as in Klatt and Klatt 1990; amplitudes and gains are linear factors here, not decibels.
constexpr std::array kMeanings{
    MeaningRow{"F0", {"Hz", "fundamental frequency; 0 is unvoiced"}},
    MeaningRow{"OQ", {"factor", "open quotient: open phase as a fraction of the period"}},
    MeaningRow{"FL", {"factor", "flutter depth as a fraction of F0"}},
    MeaningRow{"FLT", {"10us", "flutter time step of one sample; 100000 / sample frequency is real time"}},
    MeaningRow{"DI", {"factor", "diplophonia, 0 (none) to 1"}},
    MeaningRow{"TL", {"dB", "spectral tilt at 3 kHz, 0 to 41; used truncated"}},
    MeaningRow{"AV", {"factor", "amplitude of voicing"}},
    MeaningRow{"AH", {"factor", "amplitude of aspiration"}},
    MeaningRow{"AF", {"factor", "amplitude of frication"}},
    MeaningRow{"AB", {"factor", "gain of the parallel branch's bypass"}},
    MeaningRow{"FNP", {"Hz", "frequency of the nasal pole"}},
    MeaningRow{"BWNP", {"Hz", "bandwidth of the nasal pole"}},
    MeaningRow{"GNP", {"factor", "gain of the nasal pole"}},
    MeaningRow{"F#", {"Hz", "frequency of a cascade formant"}},
    MeaningRow{"BW#", {"Hz", "bandwidth of a cascade formant"}},
    MeaningRow{"G#", {"factor", "gain of a cascade formant"}},
    MeaningRow{"FNZ", {"Hz", "frequency of the nasal zero"}},
    MeaningRow{"BWNZ", {"Hz", "bandwidth of the nasal zero"}},
    MeaningRow{"GNZ", {"factor", "gain of the nasal zero"}},
    MeaningRow{"PF#", {"Hz", "frequency of a parallel resonator"}},
    MeaningRow{"PBW#", {"Hz", "bandwidth of a parallel resonator"}},
    MeaningRow{"PG#", {"factor", "gain of a parallel resonator"}},
};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool Names(std::string_view row, std::string_view name) {
    if (!row.ends_with('#')) return row == name;
    return row.size() == name.size() && IsDigit(name.back()) &&
           name.starts_with(row.substr(0, row.size() - 1));
}

Item ReadItem(ITTSDoublePacket& packet, int index) {
    Item item{};
    std::array<char, 64> name{};
    Require(packet.GetIDFromIndex(index, &item.id), "read an item's ID");
    Require(packet.GetItemName(index, name.data(), static_cast<int>(name.size())), "read an item's name");
    Require(packet.GetItemValue(index, &item.initial), "read an item's value");
    item.name = name.data();
    return item;
}

}  // namespace

ItemMeaning MeaningOf(std::string_view itemName) {
    const auto found = std::find_if(kMeanings.begin(), kMeanings.end(),
                                    [&](const MeaningRow& row) { return Names(row.name, itemName); });
    return found != kMeanings.end() ? found->meaning : ItemMeaning{"?", "?"};
}

ItemVocabulary ItemVocabulary::OfNewPacket() {
    ComPtr<ITTSDoublePacket> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    int count = 0;
    Require(packet->GetItemsCount(&count), "count a packet's items");
    std::vector<Item> items;
    items.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) items.push_back(ReadItem(*packet.Get(), i));
    return ItemVocabulary(std::move(items));
}

std::optional<int> ItemVocabulary::IndexOf(std::string_view name) const {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [&](const Item& i) { return i.name == name; });
    if (found == items_.end()) return std::nullopt;
    return static_cast<int>(found - items_.begin());
}

}  // namespace larynth
