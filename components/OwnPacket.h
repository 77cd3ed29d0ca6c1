// SPDX-License-Identifier: MIT
/// The short road from a packet of this system into a component. It leaves what the way through the packet's
/// interfaces leaves, values and states, without making fourteen views and seventy checked calls a frame.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "com/OwnObject.h"
#include "engine/Constants.h"
#include "packet/LarynthParams.h"

namespace larynth {

static_assert(PolePosition::kPi10 == kPi10 && PolePosition::kTwoPi10 == kTwoPi10,
              "packet and engine compute with the same pi");

/// The values of a packet that is this system's own and stands alone; null for any other, which is asked
/// through its interfaces. `packet` is null or can be called.
inline KlattPacketData* OwnPacketValues(IUnknown* packet) noexcept {
    LarynthParams* const own = OwnObject<LarynthParams>::Find(packet);
    return own != nullptr ? &own->Values() : nullptr;
}

/// Sets every section from the packet's entry of the same place, `kept` being what the last frame computed.
/// Entries of a packet have an owner: they always have coefficients to give.
template <class Section, class Entry, std::size_t Count>
void TakeSections(std::span<Section> sections, std::array<Entry, Count>& entries,
                  std::array<PolePosition, Count>& kept) noexcept {
    for (std::size_t i = 0; i < std::min(sections.size(), Count); ++i) {
        const auto [A, B, C] = *entries[i].ABC(kept[i]);
        sections[i].SetABC(A, B, C);
    }
}

}  // namespace larynth
