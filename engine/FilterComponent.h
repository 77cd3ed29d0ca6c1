// SPDX-License-Identifier: MIT
#pragma once

#include "engine/Component.h"

namespace larynth {

/// An element that makes one output sample from one input sample.
class FilterComponent : public Component {
  public:
    virtual ~FilterComponent() = default;

    /// Transforms one sample and advances the state. The cached output is left to the owner (see Store).
    virtual double Process(double x) = 0;

  protected:
    FilterComponent() = default;
    FilterComponent(const FilterComponent&) = default;
    FilterComponent& operator=(const FilterComponent&) = default;
};

}  // namespace larynth
