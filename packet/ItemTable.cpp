// SPDX-License-Identifier: MIT
#include "packet/ItemTable.h"

#include <array>
#include <cstddef>

namespace larynth {

namespace {

struct ScalarRow {
    std::string_view name;
    double initial;
};

constexpr std::array<ScalarRow, kScalarCount> kScalars{{
    {"F0", 100.0},  // Hz
    {"OQ", 0.5},    // open phase / period
    {"FL", 0.0},    // fraction of F0
    {"FLT", 0.0},   // 10^-5 s a sample
    {"DI", 0.0},    // 0 to 1
    {"TL", 0.0},    // 0 to 41
    {"AV", 0.0},    // linear, as the other amplitudes
    {"AH", 30.0},
    {"AF", 1.0},
    {"AB", 0.0},
}};

struct EntryRow {
    std::array<std::string_view, kValuesPerEntry> names;
    std::array<double, kValuesPerEntry> initial;  // Hz, Hz, linear
};

// The first entry of the cascade is the nasal pole, so that its formants count from 1; the antiresonator is
// the nasal zero that goes with it. The parallel tract counts from 0.
constexpr std::array<EntryRow, kEntryCount> kEntries{{
    {{"FNP", "BWNP", "GNP"}, {300.0, 90.0, 1.0}},
    {{"F1", "BW1", "G1"}, {0.0, 0.0, 1.0}},
    {{"F2", "BW2", "G2"}, {0.0, 0.0, 1.0}},
    {{"F3", "BW3", "G3"}, {0.0, 0.0, 1.0}},
    {{"F4", "BW4", "G4"}, {0.0, 0.0, 1.0}},
    {{"F5", "BW5", "G5"}, {0.0, 0.0, 1.0}},
    {{"FNZ", "BWNZ", "GNZ"}, {300.0, 90.0, 1.0}},
    {{"PF0", "PBW0", "PG0"}, {0.0, 0.0, 1.0}},
    {{"PF1", "PBW1", "PG1"}, {0.0, 0.0, 1.0}},
    {{"PF2", "PBW2", "PG2"}, {0.0, 200.0, 0.0}},
    {{"PF3", "PBW3", "PG3"}, {0.0, 200.0, 0.0}},
    {{"PF4", "PBW4", "PG4"}, {0.0, 350.0, 0.0}},
    {{"PF5", "PBW5", "PG5"}, {0.0, 200.0, 0.0}},
    {{"PF6", "PBW6", "PG6"}, {4900.0, 1500.0, 0.0}},
}};

using Items = std::array<ItemInfo, kItemCount>;

constexpr Items BuildItems() {
    Items items{};
    int index = 0;
    const auto append = [&](int id, std::string_view name, double initial) {
        items[static_cast<std::size_t>(index++)] = {id, name, initial};
    };

    for (const ScalarRow& row : kScalars) append(index, row.name, row.initial);
    auto row = kEntries.begin();
    for (const ResonatorGroup& group : {kCascadePoles, kCascadeZeros, kParallelPoles}) {
        int id = group.unitCode;
        for (int position = 0; position < group.count; ++position, ++row) {
            for (std::size_t k = 0; k < kValuesPerEntry; ++k) append(id++, row->names[k], row->initial[k]);
        }
    }
    return items;
}

constexpr Items kItems = BuildItems();

std::optional<int> IndexInGroup(const ResonatorGroup& group, int offset) noexcept {
    if (offset >= kValuesPerEntry * group.count) return std::nullopt;
    return kScalarCount + kValuesPerEntry * group.firstEntry + offset;
}

}  // namespace

const ItemInfo& Item(int index) noexcept { return kItems[static_cast<std::size_t>(index)]; }

std::optional<int> IndexFromID(int id) noexcept {
    const int unit = (id >> 10) & 7;
    const int offset = id & 1023;
    switch (unit) {
        case 0:
            return offset < kScalarCount ? std::optional(offset) : std::nullopt;
        case 1:
            return IndexInGroup(kCascadePoles, offset);
        case 2:
            return IndexInGroup(kCascadeZeros, offset);
        case 3:
            return IndexInGroup(kParallelPoles, offset);
        default:
            return std::nullopt;
    }
}

std::optional<int> IndexFromName(std::string_view name) noexcept {
    for (int index = 0; index < kItemCount; ++index) {
        if (Item(index).name == name) return index;
    }
    return std::nullopt;
}

}  // namespace larynth
