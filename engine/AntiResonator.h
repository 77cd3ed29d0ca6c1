// SPDX-License-Identifier: MIT
#pragma once

#include "engine/FilterComponent.h"

namespace larynth {

/// Two-zero section (Klatt 1980): y[n] = A·x[n] + B·x[n−1] + C·x[n−2].
///
/// With A = 1/a, B = −b/a, C = −c/a it undoes a resonator with the coefficients a, b, c.
class AntiResonator final : public FilterComponent {
  public:
    AntiResonator(double A, double B, double C) : A_(A), B_(B), C_(C) {}

    /// Sets the coefficients; the state is kept.
    void SetABC(double A, double B, double C);

    double Process(double x) override;

  private:
    double A_, B_, C_;
    double x1_ = 0.0, x2_ = 0.0;
};

inline void AntiResonator::SetABC(double A, double B, double C) {
    A_ = A;
    B_ = B;
    C_ = C;
}

inline double AntiResonator::Process(double x) {
    const double y = (B_ * x1_ + C_ * x2_) + A_ * x;  // this order: rounding is part of the result
    x2_ = x1_;
    x1_ = x;
    return y;
}

}  // namespace larynth
