// SPDX-License-Identifier: MIT
#include "engine/vector/PhaseTable.h"

#include <algorithm>

#include "engine/VoicingSourceCore.h"

namespace larynth::vector {

namespace {

/// Copies the phases that come before the end of their period, and returns their number.
std::size_t CopyPeriod(const double* from, const double* T0, double* to, std::size_t count) noexcept {
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {  // so that a compiler makes vectors of it
        bool ends = false;
        for (std::size_t k = i; k < i + 4; ++k) {
            ends |= from[k] > T0[k];
            to[k] = from[k];
        }
        if (ends) break;
    }
    for (; i < count && !(from[i] > T0[i]); ++i) to[i] = from[i];
    return i;
}

}  // namespace

void PhaseTable::Write(double T, double& phase, double T0, std::span<double> phases) noexcept {
    const std::size_t count = phases.size();
    if (!(T > 0.0 && T0 > T && Reaches(T, phase, count))) {
        for (double& each : phases) each = phase = NextPhase(phase, T, T0);
        return;
    }
    const std::size_t end = PlaceBeyond(T0);
    for (std::size_t first = 0; first < count;) {
        const std::size_t next = place_ + 1 < end ? place_ + 1 : 0;
        const std::size_t length = std::min(count - first, end - next);
        std::copy_n(sums_ + next, length, phases.data() + first);
        first += length;
        place_ = next + length - 1;
    }
    phase = sums_[place_];
}

void PhaseTable::Write(double T, double& phase, const double* T0, std::span<double> phases) noexcept {
    const std::size_t count = phases.size();
    if (!(T > 0.0 && Reaches(T, phase, count))) {
        for (std::size_t i = 0; i < count; ++i) phases[i] = phase = NextPhase(phase, T, T0[i]);
        return;
    }
    for (std::size_t i = 0; i < count;) {
        const std::size_t length = CopyPeriod(sums_ + place_ + 1, T0 + i, phases.data() + i, count - i);
        place_ += length;
        i += length;
        if (i < count) {
            phases[i++] = 0.0;
            place_ = 0;
        }
    }
    phase = sums_[place_];
}

std::size_t PhaseTable::PlaceBeyond(double T0) const noexcept {
    const double periods = T0 / T_;  // nearly its place, were the sums exact
    std::size_t place =
        periods < static_cast<double>(count_) ? static_cast<std::size_t>(periods) : count_ - 1;
    while (sums_[place] > T0) --place;  // the first is 0
    while (place < count_ && sums_[place] <= T0) ++place;
    return place;
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

}  // namespace larynth::vector
