// SPDX-License-Identifier: MIT
/// The noise of two sources that draw in turn from one generator.
#pragma once

#include "engine/NoiseSource.h"
#include "engine/block/Kernels.h"
#include "engine/block/Lanes.h"

namespace larynth::block {

/// The generator's states behind four draws of one source. The other source draws in between, so that four
/// samples take the sequence on by eight.
struct FourDraws {
    using States __attribute__((vector_size(16))) = std::uint32_t;
    using Values __attribute__((vector_size(16))) = std::int32_t;
    static constexpr std::uint32_t kOffset = JumpNoiseState(0, 8);
    static constexpr std::uint32_t kFactor = JumpNoiseState(1, 8) - kOffset;

    States states;

    /// `first` is the state behind the source's first draw.
    LARYNTH_KERNEL explicit FourDraws(std::uint32_t first)
        : states{first, JumpNoiseState(first, 2), JumpNoiseState(first, 4), JumpNoiseState(first, 6)} {}

    /// The next four samples.
    LARYNTH_KERNEL Double4 Samples(double amplitude) {
        const auto values =
            __builtin_bit_cast(Values, NoiseValue(states));  // signed ones are faster converted
        states = states * kFactor + kOffset;
        return NoiseSample(__builtin_convertvector(values, Double4), amplitude);
    }
};

LARYNTH_KERNEL void DrawNoise(std::uint32_t state, const Noise& noise, std::size_t count) {
    const Noise n = noise;  // a copy: the outputs could be any doubles
    FourDraws aspiration(NextNoiseState(state)), frication(JumpNoiseState(state, 2));
    for (std::size_t i = 0; i < count; i += 4) {
        Store(aspiration.Samples(n.aspirationAmplitude), n.aspiration + i);
        const Double4 samples = frication.Samples(n.fricationAmplitude);
        Store(samples, n.frication + i);
        Store(n.bypassGain * samples, n.bypassed + i);
    }
}

}  // namespace larynth::block
