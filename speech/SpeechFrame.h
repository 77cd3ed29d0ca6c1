// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace larynth {

/// The items of a packet that the rules set, in the order of a frame's values. A formant has a frequency and
/// a bandwidth, a parallel resonator a gain as well.
enum SpeechItem : std::size_t {
    kF0,
    kOQ,
    kFL,
    kFLT,
    kTL,
    kAV,
    kAH,
    kAF,
    kAB,
    kFNP,
    kBWNP,
    kFNZ,
    kBWNZ,
    kF1,
    kPF0 = kF1 + std::size_t{2} * 5,
    kSpeechItems = kPF0 + std::size_t{3} * 7,
};

/// A frame of speech: what the rest of a packet is to a new one stays.
using SpeechFrame = std::array<double, kSpeechItems>;

/// The packet's name of a frame's value: "F0", …, "F1", "BW1", …, "PF0", "PBW0", "PG0", ….
std::string SpeechItemName(std::size_t item);

}  // namespace larynth
