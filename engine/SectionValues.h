// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// A second-order section as plain numbers. `Number` is double, or a vector of doubles for as many sections
/// side by side: inlined always, as a vector can be handed over only within one instruction set.
template <class Number>
struct Section {
    Number A, B, C;
    Number state1 = {}, state2 = {};  ///< The last signal value and the one before: outputs of a resonator,
                                      ///< inputs of an antiresonator.

    /// The output for the input `x`, in this order: rounding is part of the result.
    [[gnu::always_inline]] constexpr Number Output(const Number& x) const { return Kept() + A * x; }

    /// What the states contribute to it.
    [[gnu::always_inline]] constexpr Number Kept() const { return B * state1 + C * state2; }

    /// One sample through a resonator.
    [[gnu::always_inline]] constexpr Number Resonate(const Number& x) {
        const Number y = Output(x);
        Keep(y);
        return y;
    }
    /// One sample through an antiresonator.
    [[gnu::always_inline]] constexpr Number AntiResonate(const Number& x) {
        const Number y = Output(x);
        Keep(x);
        return y;
    }

    /// Makes `newest` the last signal value.
    [[gnu::always_inline]] constexpr void Keep(const Number& newest) {
        state2 = state1;
        state1 = newest;
    }
};

using SectionValues = Section<double>;

/// Two numbers in the smallest vector that processors have.
using Double2 __attribute__((vector_size(16))) = double;

}  // namespace larynth
