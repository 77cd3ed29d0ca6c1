// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "engine/LFilterRing.h"

namespace larynth {

/// General recursive filter in direct form I:
/// y[n] = Σ b[j]·x[n−j] + Σ a[i]·y[n−1−i]. Feedback terms are added, so a carries its own sign.
class LFilter {
  public:
    /// A filter with that many coefficients, all 0: it is silent until they are written.
    LFilter(std::size_t feedbackCount, std::size_t feedForwardCount);

    /// Replaces both sets. A set whose length changes clears the history of its signal; otherwise the history
    /// is kept and the output stays continuous. Unchanged when memory runs out.
    void SetCoefficients(const std::vector<double>& feedback, const std::vector<double>& feedForward);

    /// One step of the difference equation.
    double Filter(double x);

    /// The coefficients in place; their number is fixed by the constructor or SetCoefficients.
    std::span<double> Feedback() { return a_; }
    std::span<double> FeedForward() { return b_; }

  private:
    LFilterRing inputs_;
    LFilterRing outputs_;
    std::vector<double> a_;
    std::vector<double> b_;
};

inline double LFilter::Filter(double x) {
    inputs_.Write(x);
    // Feedback before feed-forward, newest value first: rounding is part of the result.
    double y = 0.0;
    for (std::size_t i = 0; i < a_.size(); ++i) y = y + outputs_.Recent(i) * a_[i];
    for (std::size_t j = 0; j < b_.size(); ++j) y = y + inputs_.Recent(j) * b_[j];
    outputs_.Write(y);
    return y;
}

}  // namespace larynth
