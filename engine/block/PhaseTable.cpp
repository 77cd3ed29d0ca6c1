// SPDX-License-Identifier: MIT
#include "engine/block/PhaseTable.h"

#include "engine/VoicingSourceCore.h"

namespace larynth::block {

void PhaseTable::AddUp(double T, double& phase, const double* T0, std::span<double> phases) noexcept {
    double t = phase;
    for (std::size_t i = 0; i < phases.size(); ++i) {
        phases[i] = t = NextPhase(t, T, T0[i]);
    }
    phase = t;
}

bool PhaseTable::Reaches(double T, double phase, std::size_t count) noexcept {
    if (T != T_ || count_ == 0) {
        T_ = T;
        sums_[0] = 0.0;
        count_ = 1;
    }
    for (; count_ < kMostSums && sums_[count_ - 1] < phase; ++count_) sums_[count_] = sums_[count_ - 1] + T;
    if (place_ >= count_ || sums_[place_] != phase) {
        const std::span known(sums_, count_);
        const auto found = std::ranges::lower_bound(known, phase);
        if (found == known.end() || *found != phase) return false;
        place_ = static_cast<std::size_t>(found - known.begin());
    }
    if (place_ + count >= kMostSums) return false;
    for (; count_ <= place_ + count; ++count_) sums_[count_] = sums_[count_ - 1] + T;
    return true;
}

}  // namespace larynth::block
