// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstddef>
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
    void Advance(double FLT, std::span<double> times) {
        double t = t_;  // not the member, which `times` could overlap for all that a compiler knows
        for (double& time : times) time = t = NextTime(t, FLT);
        t_ = t;
    }

    /// The sinusoids' arguments are these multiples of pi times the flutter time; their sum is made in this
    /// order.
    static constexpr double kMultiples[] = {9.4, 25.4, 14.2};

    /// F0 (Hz) moved by the sum of the sinusoids.
    static double Moved(double F0, double FL, double sum) {
        return F0 * (1.0 - sum * FL * -0.3333333333333333);
    }

    /// True when no sine of the next `count` steps has an argument beyond kSineReductionLimit.
    bool StaysReduced(double FLT, std::size_t count) const {
        const double reach = std::fabs(t_) + std::fabs(FLT) * 1e-5 * static_cast<double>(count);
        return reach <= kReducedTime;
    }

    /// The flutter time; it is never reset.
    double Time() const { return t_; }

  private:
    static double NextTime(double t, double FLT) { return t - FLT * -1e-5; }

    /// Two weeks of sound. The little that it stays below the limit covers the rounding of many steps.
    static constexpr double kReducedTime = 1.25e6;
    static_assert(kMultiples[1] * kPi10 * kReducedTime < 0.999 * kSineReductionLimit);

    double t_ = 0.0;
};

inline double Flutter::Step(double F0, double FL, double FLT) {
    t_ = NextTime(t_, FLT);
    const double a = kPi10 * t_;
    return Moved(F0, FL, (Sine(kMultiples[0] * a) + Sine(kMultiples[1] * a)) + Sine(kMultiples[2] * a));
}

}  // namespace larynth
