// SPDX-License-Identifier: MIT
#include "engine/LFilter.h"

#include <utility>

namespace larynth {

LFilter::LFilter(std::size_t feedbackCount, std::size_t feedForwardCount)
    : inputs_(feedForwardCount), outputs_(feedbackCount), a_(feedbackCount, 0.0), b_(feedForwardCount, 0.0) {}

void LFilter::SetCoefficients(const std::vector<double>& feedback, const std::vector<double>& feedForward) {
    LFilter changed = *this;  // all allocation happens on the copy
    changed.a_ = feedback;
    if (feedback.size() != changed.outputs_.Count()) changed.outputs_.Resize(feedback.size());
    changed.b_ = feedForward;
    if (feedForward.size() != changed.inputs_.Count()) changed.inputs_.Resize(feedForward.size());
    *this = std::move(changed);
}

}  // namespace larynth
