// SPDX-License-Identifier: MIT
#pragma once

#include "engine/FilterComponent.h"

namespace larynth {

/// A plain linear gain: y[n] = gain·x[n].
class Multiplier final : public FilterComponent {
  public:
    explicit Multiplier(double gain) : gain_(gain) {}

    void SetGain(double gain) { gain_ = gain; }
    double Gain() const { return gain_; }

    double Process(double x) override { return gain_ * x; }

  private:
    double gain_;
};

}  // namespace larynth
