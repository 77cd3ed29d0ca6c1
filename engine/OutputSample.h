// SPDX-License-Identifier: MIT
/// The last two steps of the output: pre-emphasis and 16 bits.
#pragma once

#include <cstdint>

namespace larynth {

/// y[n] − coefficient·y[n−1], before the volume. `Number` is double or a vector of doubles.
template <class Number>
[[gnu::always_inline]] constexpr Number Emphasised(const Number& y, const Number& before,
                                                   double coefficient) {
    return y - coefficient * before;
}

/// The 16-bit sample of a value: truncated toward zero, of which the low 16 bits are kept. There is no
/// saturation: 32768.0 becomes −32768. A value that is not finite, or of 2^63 or more, becomes 0.
constexpr std::int16_t ToSample(double value) noexcept {
    constexpr double kIntegerLimit = 9223372036854775808.0;  // 2^63
    if (!(value < kIntegerLimit && value > -kIntegerLimit)) return 0;
    return static_cast<std::int16_t>(static_cast<std::int64_t>(value));
}

}  // namespace larynth
