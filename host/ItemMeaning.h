// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace larynth {

/// What an item stands for.
struct ItemMeaning {
    const char* unit;
    const char* text;
};

/// Nothing for an ID of no known group: such an item belongs to a packet that is not this system's.
std::optional<ItemMeaning> MeaningOfItem(int id);

}  // namespace larynth
