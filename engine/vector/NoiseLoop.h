// SPDX-License-Identifier: MIT
/// The noise of two sources that draw in turn from one generator.
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/NoiseSource.h"
#include "engine/vector/Kernels.h"
#include "engine/vector/Lanes.h"

namespace larynth::vector {

/// The generator's states behind each second draw of a stretch, as factor·s + offset of the state s before
/// it: so none waits for another.
struct EverySecondDraw {
    std::uint32_t factor[kStretch + kRoom], offset[kStretch + kRoom];

    constexpr explicit EverySecondDraw(std::uint64_t first) {
        for (std::size_t i = 0; i < kStretch + kRoom; ++i) {
            offset[i] = JumpNoiseState(0, first + 2 * i);
            factor[i] = JumpNoiseState(1, first + 2 * i) - offset[i];
        }
    }
    LARYNTH_KERNEL double Sample(std::uint32_t state, std::size_t i, double amplitude) const {
        const auto value = static_cast<std::int32_t>(NoiseValue(factor[i] * state + offset[i]));
        return NoiseSample<double>(value, amplitude);
    }
};

inline constexpr EverySecondDraw kAspirationDraws(1), kFricationDraws(2);

LARYNTH_KERNEL void DrawNoise(std::uint32_t state, const Noise& noise, std::size_t samples) {
    const Noise n = noise;  // a copy: the outputs could be any doubles
    const std::size_t count = (samples + 3) & ~std::size_t{3};
    for (std::size_t i = 0; i < count; ++i) {
        n.aspiration[i] = kAspirationDraws.Sample(state, i, n.aspirationAmplitude);
    }
    for (std::size_t i = 0; i < count; ++i) {
        const double frication = kFricationDraws.Sample(state, i, n.fricationAmplitude);
        n.frication[i] = frication;
        n.bypassed[i] = n.bypassGain * frication;
    }
}

}  // namespace larynth::vector
