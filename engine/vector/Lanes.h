// SPDX-License-Identifier: MIT
/// Four numbers side by side in vectors of the compiler's. Every operation is the one of IEEE arithmetic in
/// each lane.
///
/// They lie in one vector (Double4), or in two (DoublePairs) for processors whose registers hold two numbers:
/// there a compiler keeps a wider vector in memory. What is written for both is a template over the type,
/// called Four, and writes four numbers as Four{a, b, c, d}.
#pragma once

#include <cstring>

#include "engine/SectionValues.h"

namespace larynth::vector {

/// Inlined wherever it is used, and so compiled with the instruction set of its caller.
#define LARYNTH_KERNEL [[gnu::always_inline]] inline

using Double4 __attribute__((vector_size(32))) = double;

struct DoublePairs {
    Double2 low, high;
};

LARYNTH_KERNEL DoublePairs operator+(const DoublePairs& a, const DoublePairs& b) {
    return {a.low + b.low, a.high + b.high};
}
LARYNTH_KERNEL DoublePairs operator*(const DoublePairs& a, const DoublePairs& b) {
    return {a.low * b.low, a.high * b.high};
}

template <class Four>
LARYNTH_KERNEL Four Load(const double* from) {
    Four v;
    std::memcpy(&v, from, sizeof v);
    return v;
}
template <class Four>
LARYNTH_KERNEL void Store(const Four& v, double* to) {
    std::memcpy(to, &v, sizeof v);
}
template <class Four>
LARYNTH_KERNEL Four InAllLanes(double x) {
    return Four{x, x, x, x};
}

template <int kLane>
LARYNTH_KERNEL double Lane(const Double4& v) {
    return v[kLane];
}
template <int kLane>
LARYNTH_KERNEL double Lane(const DoublePairs& v) {
    return (kLane < 2 ? v.low : v.high)[kLane % 2];
}

/// `v` with one lane of `other`.
template <int kLane>
LARYNTH_KERNEL Double4 WithLane(const Double4& v, const Double4& other) {
    return __builtin_shufflevector(v, other, kLane == 0 ? 4 : 0, kLane == 1 ? 5 : 1, kLane == 2 ? 6 : 2,
                                   kLane == 3 ? 7 : 3);
}
template <int kLane>
LARYNTH_KERNEL DoublePairs WithLane(const DoublePairs& v, const DoublePairs& other) {
    return {__builtin_shufflevector(v.low, other.low, kLane == 0 ? 2 : 0, kLane == 1 ? 3 : 1),
            __builtin_shufflevector(v.high, other.high, kLane == 2 ? 2 : 0, kLane == 3 ? 3 : 1)};
}

/// The lanes of `v` moved down by one, the first lane of `entering` in the last.
LARYNTH_KERNEL Double4 ShiftDown(const Double4& v, const Double4& entering) {
    return __builtin_shufflevector(v, entering, 1, 2, 3, 4);
}
LARYNTH_KERNEL DoublePairs ShiftDown(const DoublePairs& v, const DoublePairs& entering) {
    return {__builtin_shufflevector(v.low, v.high, 1, 2),
            __builtin_shufflevector(v.high, entering.low, 1, 2)};
}

/// The lanes of `v` moved up by one or by two, the last lanes of `before` in the first.
LARYNTH_KERNEL Double4 ShiftUpOne(const Double4& before, const Double4& v) {
    return __builtin_shufflevector(before, v, 3, 4, 5, 6);
}
LARYNTH_KERNEL DoublePairs ShiftUpOne(const DoublePairs& before, const DoublePairs& v) {
    return {__builtin_shufflevector(before.high, v.low, 1, 2), __builtin_shufflevector(v.low, v.high, 1, 2)};
}
LARYNTH_KERNEL Double4 ShiftUpTwo(const Double4& before, const Double4& v) {
    return __builtin_shufflevector(before, v, 2, 3, 4, 5);
}
LARYNTH_KERNEL DoublePairs ShiftUpTwo(const DoublePairs& before, const DoublePairs& v) {
    return {before.high, v.low};
}

/// The first lanes of four vectors.
LARYNTH_KERNEL Double4 FirstLanes(const Double4& a, const Double4& b, const Double4& c, const Double4& d) {
    const Double4 ab = __builtin_shufflevector(a, b, 0, 4, 0, 4);
    const Double4 cd = __builtin_shufflevector(c, d, 0, 4, 0, 4);
    return __builtin_shufflevector(ab, cd, 0, 1, 4, 5);
}
LARYNTH_KERNEL DoublePairs FirstLanes(const DoublePairs& a, const DoublePairs& b, const DoublePairs& c,
                                      const DoublePairs& d) {
    return {__builtin_shufflevector(a.low, b.low, 0, 2), __builtin_shufflevector(c.low, d.low, 0, 2)};
}

}  // namespace larynth::vector
