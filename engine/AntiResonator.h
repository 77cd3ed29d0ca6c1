// SPDX-License-Identifier: MIT
#pragma once

#include "engine/FilterComponent.h"
#include "engine/SectionValues.h"

namespace larynth {

/// Two-zero section (Klatt 1980): y[n] = A·x[n] + B·x[n−1] + C·x[n−2].
///
/// With A = 1/a, B = −b/a, C = −c/a it undoes a resonator with the coefficients a, b, c.
class AntiResonator final : public FilterComponent {
  public:
    /// Passes its input.
    AntiResonator() : AntiResonator(1.0, 0.0, 0.0) {}
    AntiResonator(double A, double B, double C) : values_{A, B, C} {}

    /// Sets the coefficients; the state is kept.
    void SetABC(double A, double B, double C);

    double Process(double x) override { return values_.AntiResonate(x); }

    SectionValues& Values() { return values_; }

  private:
    SectionValues values_;
};

inline void AntiResonator::SetABC(double A, double B, double C) {
    values_.A = A;
    values_.B = B;
    values_.C = C;
}

}  // namespace larynth
