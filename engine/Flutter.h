// SPDX-License-Identifier: MIT
#pragma once

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

    /// The flutter time; it is never reset.
    double Time() const { return t_; }

  private:
    double t_ = 0.0;
};

inline double Flutter::Step(double F0, double FL, double FLT) {
    t_ = t_ - FLT * -1e-5;
    const double a = kPi10 * t_;
    const double s = (Sine(9.4 * a) + Sine(25.4 * a)) + Sine(14.2 * a);
    return F0 * (1.0 - s * FL * -0.3333333333333333);
}

}  // namespace larynth
