// SPDX-License-Identifier: MIT
/// Eight numbers side by side in two vectors of the compiler's. Every operation is the one of IEEE arithmetic
/// in each lane.
#pragma once

#include <cstdint>
#include <cstring>

namespace larynth::block {

/// Inlined wherever it is used, and so compiled with the instruction set of its caller.
#define LARYNTH_KERNEL [[gnu::always_inline]] inline

using Double4 __attribute__((vector_size(32))) = double;

/// Copied member by member and never as a whole: compilers then keep it in registers.
struct Lanes {
    Double4 low, high;
};

LARYNTH_KERNEL Lanes operator+(const Lanes& a, const Lanes& b) { return {a.low + b.low, a.high + b.high}; }
LARYNTH_KERNEL Lanes operator*(const Lanes& a, const Lanes& b) { return {a.low * b.low, a.high * b.high}; }

LARYNTH_KERNEL Double4 Load4(const double* from) {
    Double4 vector;
    std::memcpy(&vector, from, sizeof vector);
    return vector;
}
LARYNTH_KERNEL void Store4(const Double4& vector, double* to) { std::memcpy(to, &vector, sizeof vector); }

LARYNTH_KERNEL Lanes LoadLanes(const double* from) { return {Load4(from), Load4(from + 4)}; }
LARYNTH_KERNEL void StoreLanes(const Lanes& lanes, double* to) {
    Store4(lanes.low, to);
    Store4(lanes.high, to + 4);
}

LARYNTH_KERNEL Double4 InAllLanes(double x) { return Double4{x, x, x, x}; }

/// The lanes of `v` moved down by one, the last lane of `entering` in the last.
LARYNTH_KERNEL Double4 ShiftDown(const Double4& v, const Double4& entering) {
    const Double4 upper = __builtin_shufflevector(v, entering, 2, 3, 6, 7);
    return __builtin_shufflevector(v, upper, 1, 4, 3, 7);
}

/// Rows become columns.
LARYNTH_KERNEL void Transpose(Double4& a, Double4& b, Double4& c, Double4& d) {
    const Double4 evenAB = __builtin_shufflevector(a, b, 0, 4, 2, 6);
    const Double4 oddAB = __builtin_shufflevector(a, b, 1, 5, 3, 7);
    const Double4 evenCD = __builtin_shufflevector(c, d, 0, 4, 2, 6);
    const Double4 oddCD = __builtin_shufflevector(c, d, 1, 5, 3, 7);
    a = __builtin_shufflevector(evenAB, evenCD, 0, 1, 4, 5);
    b = __builtin_shufflevector(oddAB, oddCD, 0, 1, 4, 5);
    c = __builtin_shufflevector(evenAB, evenCD, 2, 3, 6, 7);
    d = __builtin_shufflevector(oddAB, oddCD, 2, 3, 6, 7);
}

/// A lane's bits are all set or all clear.
using Mask4 __attribute__((vector_size(32))) = std::int64_t;

/// `yes` in the lanes that are set, `no` in the others.
LARYNTH_KERNEL Double4 Choose(const Mask4& mask, const Double4& yes, const Double4& no) {
    return __builtin_bit_cast(
        Double4, (mask & __builtin_bit_cast(Mask4, yes)) | (~mask & __builtin_bit_cast(Mask4, no)));
}

}  // namespace larynth::block
