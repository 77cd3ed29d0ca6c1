// SPDX-License-Identifier: MIT
#pragma once

#include "engine/Component.h"

namespace larynth {

/// An element that makes one output sample from one input sample.
class FilterComponent : public Component {
  public:
    /// Transforms one sample and advances the state. The cached output is left to the owner (see Store).
    virtual double Process(double x) = 0;

    /// The cached output: without an input there is nothing to recompute.
    double Evaluate(bool /*recompute*/) final { return Output(); }
};

}  // namespace larynth
