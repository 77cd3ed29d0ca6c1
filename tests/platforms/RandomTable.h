// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <larynth/Speech.h>

namespace larynth {

/// Frames for a synthesizer, with its settings.
struct RandomTable {
    SynthesizerSettings settings;
    std::vector<KlattFrame> frames;
};

/// The table of a number, the same on every platform: what is chosen at random comes from integers, by
/// operations that are exact. Both tracts, voices with shelves and waves, flutter, two pulses a period,
/// frames of 0 to 700 samples, sample frequencies that are no whole numbers.
RandomTable MakeRandomTable(std::uint64_t number);

}  // namespace larynth
