// SPDX-License-Identifier: MIT
#include "packet/AntiResonatorEntry.h"

#include <cmath>

namespace larynth {

void AntiResonatorEntry::FBToABC(double T, PolePosition& position) noexcept {
    const auto [F, BW, G] = fb_;
    if (F == 0.0) {
        abc_ = {1.0, 0.0, 0.0};
        return;
    }

    position.Compute(F, BW, T);
    const double r = position.Radius();
    const double c0 = -(r * r);
    const double b0 = 2.0 * r * position.Cosine();
    const double A = G / (1.0 - b0 - c0);
    abc_ = {A, -b0 * A, -c0 * A};
    current_ = Current::Both;
}

void AntiResonatorEntry::ABCToFB(double T) noexcept {
    const auto [A, B, C] = abc_;
    const double m = C / A;
    const double b0 = -B / A;
    const double c0 = -m;
    const double BW = -std::log(m) / (PolePosition::kTwoPi10 * T);
    const double F = std::acos(b0 / (2.0 * std::sqrt(m))) / (PolePosition::kTwoPi10 * T);
    fb_ = {F, BW, (1.0 - b0 - c0) * A};
    current_ = Current::Both;
}

}  // namespace larynth
