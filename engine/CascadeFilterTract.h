// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "engine/FilterComponent.h"
#include "engine/LFilter.h"

namespace larynth {

/// The vocal tract as one rational transfer function of 12 poles and 2 zeros; silent until its coefficients
/// are written.
class CascadeFilterTract final : public FilterComponent {
  public:
    static constexpr std::size_t kFeedbackCount = 12;
    static constexpr std::size_t kFeedForwardCount = 3;

    double Process(double x) override { return filter_.Filter(x); }

    /// For writing the coefficients in place; their numbers never change.
    LFilter& Filter() { return filter_; }

  private:
    LFilter filter_{kFeedbackCount, kFeedForwardCount};
};

}  // namespace larynth
