// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/Constants.h"
#include "engine/Trigonometry.h"

namespace larynth {

/// Slow quasi-random wobble of the fundamental frequency (Klatt and Klatt 1990): three sinusoids that never
/// line up. With FLT = 10⁵/fs the flutter time runs in seconds and they are 4.7, 12.7 and 7.1 Hz.
class Flutter {
  public:
    /// Whether a frame flutters at all; a NaN does not.
    static bool Applies(double F0, double FL) { return F0 > 0.0 && FL > 0.0; }

    /// Advances the flutter time by FLT·10⁻⁵ and returns F0 (Hz) moved by at most ±FL·F0.
    double Step(double F0, double FL, double FLT);

    /// Advances as a step for each of `times` does, and writes the flutter time behind each.
    void Advance(double FLT, std::span<double> times);

    /// The sinusoids' arguments are these multiples of pi times the flutter time; their sum is made in this
    /// order.
    static constexpr double kMultiples[] = {9.4, 25.4, 14.2};

    /// F0 (Hz) moved by the sum of the sinusoids.
    static double Moved(double F0, double FL, double sum) {
        return F0 * (1.0 + sum * FL * 0.3333333333333333);
    }

    /// True when no sine of the next `count` steps has an argument beyond kSineReductionLimit.
    bool StaysReduced(double FLT, std::size_t count) const {
        const double reach = std::fabs(t_) + std::fabs(FLT) * 1e-5 * static_cast<double>(count);
        return reach <= kReducedTime;
    }

  private:
    static double NextTime(double t, double FLT) { return t + FLT * 1e-5; }
    static double EvenStep(double t, double FLT, std::size_t count);

    /// Two weeks of sound. The little that it stays below the limit covers the rounding of many steps.
    static constexpr double kReducedTime = 1.25e6;
    static_assert(kMultiples[1] * kPi10 * kReducedTime < 0.999 * kSineReductionLimit);

    double t_ = 0.0;  // the flutter time; it is never reset
};

inline double Flutter::Step(double F0, double FL, double FLT) {
    t_ = NextTime(t_, FLT);
    const double a = kPi10 * t_;
    return Moved(F0, FL, (Sine(kMultiples[0] * a) + Sine(kMultiples[1] * a)) + Sine(kMultiples[2] * a));
}

/// The power of two at or below a normal number above 0.
inline double PowerOfTwoBelow(double t) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(t) & 0x7FF0'0000'0000'0000U);
}

/// The distance d of the next `count` flutter times when they are exactly t + d, t + 2·d, …; else 0.
///
/// Between two powers of two all numbers are multiples of one unit u. A step adds FLT·10⁻⁵ = m·u + r to a
/// multiple of u and rounds to the nearest one: that adds d = m·u, the same each time, unless r is half a
/// unit, which rounds now up and now down. And as long as t + count·d stays below the next power of two,
/// count·m is below 2^53, and neither the products k·d nor their sums with t are rounded.
inline double Flutter::EvenStep(double t, double FLT, std::size_t count) {
    const double power = PowerOfTwoBelow(t);
    const double halfUnit = power * 0x1p-53;
    const double d = NextTime(t, FLT) - t;
    const bool even = t > 0.0 && d > 0.0 && d < t && std::fabs(FLT * 1e-5 - d) < halfUnit &&
                      PowerOfTwoBelow(t + d * static_cast<double>(count)) == power;
    return even ? d : 0.0;
}

inline void Flutter::Advance(double FLT, std::span<double> times) {
    double t = t_;  // not the member, which `times` could overlap for all that a compiler knows
    const double d = EvenStep(t, FLT, times.size());
    if (d > 0.0) {
        for (std::size_t i = 0; i < times.size(); ++i) times[i] = t + d * static_cast<std::int32_t>(i + 1);
        t = times.empty() ? t : times.back();
    } else {
        for (double& time : times) time = t = NextTime(t, FLT);
    }
    t_ = t;
}

}  // namespace larynth
