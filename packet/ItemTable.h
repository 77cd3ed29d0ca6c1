// SPDX-License-Identifier: MIT
/// The items of a packet: every number of a frame with its index, its ID, its name and its initial value.
///
/// The index is the item's position in the packet. The ID tells group and place: the group's unit code, plus
/// three times the position in the group, plus 0 for a frequency, 1 for a bandwidth, 2 for a gain. All of it
/// is constant: the table needs no construction and is shared by all packets.
#pragma once

#include <optional>
#include <string_view>

#include "engine/Frame.h"

namespace larynth {

/// The items that belong to no resonator; the number is index and ID at once.
enum class ScalarItem : int { F0, OQ, FL, FLT, DI, TL, AV, AH, AF, AB };

inline constexpr int kScalarCount = 10;
inline constexpr int kValuesPerEntry = 3;  ///< F (Hz), BW (Hz), G (linear), in this order.

/// A group of resonator entries; all sizes are fixed.
struct ResonatorGroup {
    int unitCode;    ///< ID of the group's first item.
    int count;       ///< Entries.
    int firstEntry;  ///< Place of the group's first entry among a frame's sections.

    constexpr int EndEntry() const noexcept { return firstEntry + count; }
};

inline constexpr ResonatorGroup kCascadePoles{1024, Frame::kCascadePoles, Frame::kFirstCascadePole};
inline constexpr ResonatorGroup kCascadeZeros{2048, Frame::kCascadeZeros, Frame::kFirstCascadeZero};
inline constexpr ResonatorGroup kParallelPoles{3072, Frame::kParallelPoles, Frame::kFirstParallelPole};

inline constexpr int kEntryCount = kParallelPoles.EndEntry();
inline constexpr int kItemCount = kScalarCount + kValuesPerEntry * kEntryCount;
static_assert(kItemCount == 52);

struct ItemInfo {
    int id;
    std::string_view name;  ///< At most four characters; a zero byte follows.
    double initial;         ///< Value in a new packet.
};

/// True for the index of an item.
constexpr bool IsItem(int index) noexcept { return index >= 0 && index < kItemCount; }

/// The row of an item; `index` must be one.
const ItemInfo& Item(int index) noexcept;

/// The index of the item with this ID. Bits above 12 are not examined.
std::optional<int> IndexFromID(int id) noexcept;

/// The index of the item with exactly this name.
std::optional<int> IndexFromName(std::string_view name) noexcept;

}  // namespace larynth
