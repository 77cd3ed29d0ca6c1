// SPDX-License-Identifier: MIT
/// From the sums of the tracts to 16-bit samples.
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/OutputSample.h"
#include "engine/vector/Kernels.h"
#include "engine/vector/Lanes.h"

namespace larynth::vector {

/// Cuts as ToSample does with values below 2^31; true for others. Below, the conversion to 32 bits, which
/// vectors have, keeps the same low 16 bits as the one to 64 bits.
LARYNTH_KERNEL bool CutSmall(double value, std::int16_t& out) {
    constexpr double kLimit = 2147483648.0;  // 2^31
    const bool small = value < kLimit && value > -kLimit;
    out = static_cast<std::int16_t>(static_cast<std::int32_t>(small ? value : 0.0));
    return !small;
}

LARYNTH_KERNEL double FinishedValue(const Finish& f, double sum, double sumBefore) {
    return f.volume * Emphasised(sum * f.gain, sumBefore * f.gain, f.coefficient);
}

LARYNTH_KERNEL void FinishSamples(const Finish& finish, double previous, const double* sums,
                                  std::int16_t* out, std::size_t count) {
    const Finish f = finish;  // a copy: compilers then keep it in registers
    const double first = f.volume * Emphasised(sums[0] * f.gain, previous, f.coefficient);
    out[0] = ToSample(first);
    std::int64_t large = 0;
    for (std::size_t i = 1; i < count; ++i) {
        large |= CutSmall(FinishedValue(f, sums[i], sums[i - 1]), out[i]) ? 1 : 0;
    }
    if (large == 0) return;
    for (std::size_t i = 1; i < count; ++i) out[i] = ToSample(FinishedValue(f, sums[i], sums[i - 1]));
}

}  // namespace larynth::vector
