// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace larynth::bench {

/// Where a frame's numbers stand; the order is the packet's.
enum ItemIndex : std::size_t { F0, OQ, FL, FLT, DI, TL, AV, AH, AF, AB, kScalars };

inline constexpr std::size_t kPoles = 6, kZeros = 1, kParallel = 7;  // sections, three items each
inline constexpr std::size_t kFirstPole = kScalars;
inline constexpr std::size_t kFirstZero = kFirstPole + 3 * kPoles;
inline constexpr std::size_t kFirstParallel = kFirstZero + 3 * kZeros;
inline constexpr std::size_t kItems = kFirstParallel + 3 * kParallel;
static_assert(kItems == 52);

/// What a packet says, as plain numbers.
struct PlainFrame {
    double items[kItems];
    double sampleFreq;  // Hz
    int length;         // samples
};

}  // namespace larynth::bench
