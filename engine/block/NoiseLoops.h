// SPDX-License-Identifier: MIT
/// The noise of two sources that draw in turn from one generator.
#pragma once

#include "engine/block/Kernels.h"
#include "engine/block/Lanes.h"
#include "engine/NoiseSource.h"

namespace larynth::block {

LARYNTH_KERNEL void NoiseOneByOne(std::uint32_t state, const NoisePair& noise, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        state = NextNoiseState(state);
        noise.first[i] = NoiseSample<double>(NoiseValue(state), noise.firstAmplitude);
        state = NextNoiseState(state);
        noise.second[i] = NoiseSample<double>(NoiseValue(state), noise.secondAmplitude);
    }
}

/// Eight draws at once: the states of eight draws in a row, each moved on by eight draws in one step.
LARYNTH_KERNEL void NoiseByEight(std::uint32_t state, const NoisePair& noise, std::size_t count) {
    using States __attribute__((vector_size(32))) = std::uint32_t;
    using Values __attribute__((vector_size(16))) = std::int32_t;
    constexpr std::uint32_t kOffset = JumpNoiseState(0, 8);
    constexpr std::uint32_t kFactor = JumpNoiseState(1, 8) - kOffset;

    States states;
    std::uint32_t last = state;
    for (int k = 0; k < 8; ++k) states[k] = last = NextNoiseState(last);
    for (std::size_t i = 0; i < count; i += 4) {
        const States bits = (states >> 16) & 0x7FFFU;
        const auto even = __builtin_bit_cast(Values, __builtin_shufflevector(bits, bits, 0, 2, 4, 6));
        const auto odd = __builtin_bit_cast(Values, __builtin_shufflevector(bits, bits, 1, 3, 5, 7));
        Store4(NoiseSample(__builtin_convertvector(even, Double4), noise.firstAmplitude), noise.first + i);
        Store4(NoiseSample(__builtin_convertvector(odd, Double4), noise.secondAmplitude), noise.second + i);
        states = states * kFactor + kOffset;
    }
}

}  // namespace larynth::block
