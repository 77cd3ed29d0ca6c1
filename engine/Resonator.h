// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

#include "engine/Constants.h"
#include "engine/FilterComponent.h"

namespace larynth {

/// Two-pole section (Klatt 1980): y[n] = A·x[n] + B·y[n−1] + C·y[n−2].
///
/// Parameter changes act on the next sample and keep the state, so that they do not click. Stable for
/// bandwidths above 0 Hz.
class Resonator final : public FilterComponent {
  public:
    Resonator(double A, double B, double C) : A_(A), B_(B), C_(C) {}

    /// Sets the coefficients directly.
    void SetABC(double A, double B, double C);

    /// Sets the coefficients from centre frequency F (Hz), bandwidth BW (Hz), linear gain at 0 Hz and sample
    /// time T (s). With F or BW zero (or NaN) the section is a plain gain.
    void SetFB(double F, double BW, double gain, double T);

    double Process(double x) override;

  private:
    double A_, B_, C_;
    double gain_ = 1.0;
    double y1_ = 0.0, y2_ = 0.0;
};

inline void Resonator::SetABC(double A, double B, double C) {
    A_ = A;
    B_ = B;
    C_ = C;
}

inline void Resonator::SetFB(double F, double BW, double gain, double T) {
    gain_ = gain;
    if (IsZeroOrNan(F) || IsZeroOrNan(BW)) {
        SetABC(gain_, 0.0, 0.0);
        return;
    }

    const double r = std::exp(-kPi10 * BW * T);
    C_ = -(r * r);
    B_ = 2.0 * r * std::cos(2.0 * (T * F * kPi10));
    A_ = gain_ * ((1.0 - B_) - C_);
}

inline double Resonator::Process(double x) {
    const double y = (B_ * y1_ + C_ * y2_) + A_ * x;  // this order: rounding is part of the result
    y2_ = y1_;
    y1_ = y;
    return y;
}

}  // namespace larynth
