// SPDX-License-Identifier: MIT
/// Eight numbers side by side in two vectors of the compiler's. Every operation is the one of IEEE arithmetic
/// in each lane.
#pragma once

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

/// `vector` moved up by one lane, the last lane of `below` in the first. Two steps that are one instruction
/// each.
LARYNTH_KERNEL Double4 ShiftUp(const Double4& below, const Double4& vector) {
    const Double4 middle = __builtin_shufflevector(below, vector, 2, 3, 4, 5);
    return __builtin_shufflevector(middle, vector, 1, 4, 3, 6);
}

/// The lanes moved up by one, `first` in lane 0.
LARYNTH_KERNEL Lanes ShiftIn(double first, const Lanes& lanes) {
    return {ShiftUp(Double4{} + first, lanes.low), ShiftUp(lanes.low, lanes.high)};
}

/// `yes` in the lanes whose number k gives first ≤ k ≤ last, `no` in the others.
LARYNTH_KERNEL Double4 ChooseBetween(const Double4& number, double first, double last, const Double4& yes,
                                     const Double4& no) {
    const auto mask = (number >= first) & (number <= last);
    using Mask = decltype(mask + mask);
    return __builtin_bit_cast(
        Double4, (mask & __builtin_bit_cast(Mask, yes)) | (~mask & __builtin_bit_cast(Mask, no)));
}
LARYNTH_KERNEL Lanes ChooseBetween(double first, double last, const Lanes& yes, const Lanes& no) {
    constexpr Double4 kLow = {0, 1, 2, 3}, kHigh = {4, 5, 6, 7};
    return {ChooseBetween(kLow, first, last, yes.low, no.low),
            ChooseBetween(kHigh, first, last, yes.high, no.high)};
}

}  // namespace larynth::block
