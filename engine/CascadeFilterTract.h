// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "engine/FilterComponent.h"
#include "engine/Frame.h"
#include "engine/LFilter.h"

namespace larynth {

/// The vocal tract as one rational transfer function of 12 poles and 2 zeros; silent until its coefficients
/// are written.
class CascadeFilterTract final : public FilterComponent {
  public:
    static constexpr Frame::Sections kSections = Frame::Sections::None;

    void Take(const Frame& frame) {
        std::ranges::copy(frame.alpha, filter_.Feedback().begin());
        std::ranges::copy(frame.beta, filter_.FeedForward().begin());
    }

    double Process(double x) override { return filter_.Filter(x); }

    /// For writing the coefficients in place; their numbers never change.
    LFilter& Filter() { return filter_; }

  private:
    LFilter filter_{Frame::kFeedbackCount, Frame::kFeedForwardCount};
};

}  // namespace larynth
