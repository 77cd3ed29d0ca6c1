// SPDX-License-Identifier: MIT
#include "packet/PolePosition.h"

#include <cmath>

namespace larynth {

void PolePosition::Compute(double F, double BW, double T) noexcept {
    const bool otherTime = T != T_;
    if (otherTime || BW != BW_) radius_ = std::exp(-kPi10 * BW * T);
    if (otherTime || F != F_) cosine_ = std::cos(kTwoPi10 * F * T);
    F_ = F;
    BW_ = BW;
    T_ = T;
}

}  // namespace larynth
