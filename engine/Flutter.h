// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstddef>
#include <span>

#include "engine/Constants.h"
#include "engine/Sine.h"

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
        for (double& time : times) time = t_ = t_ - FLT * -1e-5;
    }

    /// F0 (Hz) at flutter time `t`, by whichever function computes the sines.
    template <double (*kSine)(double)>
    static double Moved(double F0, double FL, double t);

    /// True when no sine of the next `count` steps has an argument beyond kSineReductionLimit.
    bool StaysReduced(double FLT, std::size_t count) const {
        const double reach = std::fabs(t_) + std::fabs(FLT) * 1e-5 * static_cast<double>(count);
        return reach <= kReducedTime;
    }

    /// The flutter time; it is never reset.
    double Time() const { return t_; }

  private:
    /// More than an hour of speech. The little that it stays below the limit covers the rounding of many steps.
    static constexpr double kReducedTime = 6250.0;
    static_assert(25.4 * kPi10 * kReducedTime < 0.999 * kSineReductionLimit);

    double t_ = 0.0;
};

inline double Flutter::Step(double F0, double FL, double FLT) {
    t_ = t_ - FLT * -1e-5;
    return Moved<Sine>(F0, FL, t_);
}

template <double (*kSine)(double)>
[[gnu::always_inline]] inline double Flutter::Moved(double F0, double FL, double t) {
    const double a = kPi10 * t;
    const double s = (kSine(9.4 * a) + kSine(25.4 * a)) + kSine(14.2 * a);
    return F0 * (1.0 - s * FL * -0.3333333333333333);
}

}  // namespace larynth
