// SPDX-License-Identifier: MIT
/// From the sums of the tracts to 16-bit samples.
#pragma once

#include "engine/OutputSample.h"
#include "engine/block/Kernels.h"
#include "engine/block/Lanes.h"

namespace larynth::block {

/// As ToSample does with each of four values below 2^31, where the conversion to 32 bits, which vectors have,
/// gives the same low 16 bits as the one to 64 bits.
LARYNTH_KERNEL void PutFourSamples(const Double4& values, std::int16_t* out) {
    using Integers __attribute__((vector_size(16))) = std::int32_t;
    using Halves __attribute__((vector_size(16))) = std::int16_t;
    const auto halves = __builtin_bit_cast(Halves, __builtin_convertvector(values, Integers));
    const Halves low = __builtin_shufflevector(halves, halves, 0, 2, 4, 6, 0, 2, 4, 6);
    std::memcpy(out, &low, 4 * sizeof *out);
}

/// The lanes below 2^31.
LARYNTH_KERNEL Mask4 FitsInt32(const Double4& values) {
    constexpr double kLimit = 2147483648.0;
    return (values < kLimit) & (values > -kLimit);
}

}  // namespace larynth::block
