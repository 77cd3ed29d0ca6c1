// SPDX-License-Identifier: MIT
#pragma once

#include "engine/Constants.h"
#include "engine/Exponential.h"
#include "engine/FilterComponent.h"
#include "engine/SectionValues.h"
#include "engine/Trigonometry.h"

namespace larynth {

/// Two-pole section (Klatt 1980): y[n] = A·x[n] + B·y[n−1] + C·y[n−2].
///
/// Parameter changes act on the next sample and keep the state, so that they do not click. Stable for
/// bandwidths above 0 Hz.
class Resonator final : public FilterComponent {
  public:
    /// Passes its input.
    Resonator() : Resonator(1.0, 0.0, 0.0) {}
    Resonator(double A, double B, double C) : values_{A, B, C} {}

    /// Sets the coefficients directly.
    void SetABC(double A, double B, double C);

    /// Sets the coefficients from centre frequency F (Hz), bandwidth BW (Hz), linear gain at 0 Hz and sample
    /// time T (s). With F or BW zero (or NaN) the section is a plain gain.
    void SetFB(double F, double BW, double gain, double T);

    double Process(double x) override { return values_.Resonate(x); }

    SectionValues& Values() { return values_; }

  private:
    SectionValues values_;
    double gain_ = 1.0;
};

inline void Resonator::SetABC(double A, double B, double C) {
    values_.A = A;
    values_.B = B;
    values_.C = C;
}

inline void Resonator::SetFB(double F, double BW, double gain, double T) {
    gain_ = gain;
    if (IsZeroOrNan(F) || IsZeroOrNan(BW)) {
        SetABC(gain_, 0.0, 0.0);
        return;
    }

    const double r = Exponential(-kPi10 * BW * T);
    const double C = -(r * r);
    const double B = 2.0 * r * Cosine(2.0 * (T * F * kPi10));
    SetABC(gain_ * ((1.0 - B) - C), B, C);
}

}  // namespace larynth
