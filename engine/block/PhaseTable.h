// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace larynth::block {

/// The sums 0, T, T + T, … of a sample time T (s), each rounded as the running phase of a pitch period is. A
/// period begins at exactly 0, so its phases are these very numbers: they can be read off instead of being
/// added up, which is a chain of operations that wait for each other.
class PhaseTable {
  public:
    /// Calls run(phases, first, length) for the phases of samples `first` to `first` + `length` − 1, until
    /// `count` samples have theirs, and moves `phase` to the last. All periods have the length T0. False,
    /// with nothing done, when the table does not serve.
    template <class Run>
    bool ForEachRun(double T, double& phase, double T0, std::size_t count, Run&& run) noexcept;

    /// Writes the phases of the next samples, the period being T0[i] at sample i, and moves `phase` to the
    /// last.
    static void AddUp(double T, double& phase, const double* T0, std::span<double> phases) noexcept;

  private:
    /// Enough for 6 Hz at 22050 Hz.
    static constexpr std::size_t kMostSums = 4096;

    /// Looks the phase up and sees to it that the sums reach `count` samples further; false when they cannot.
    bool Reaches(double T, double phase, std::size_t count) noexcept;

    double T_ = 0.0;
    std::size_t count_ = 0;  // of the sums, which are made as far as they are needed
    std::size_t place_ = 0;  // of the phase among the sums
    double sums_[kMostSums];
};

template <class Run>
bool PhaseTable::ForEachRun(double T, double& phase, double T0, std::size_t count, Run&& run) noexcept {
    if (!(T > 0.0 && T0 > T && Reaches(T, phase, count))) return false;
    const std::span known(sums_, count_);
    const auto end = static_cast<std::size_t>(std::ranges::upper_bound(known, T0) - known.begin());
    for (std::size_t first = 0; first < count;) {
        const std::size_t next = place_ + 1 < end ? place_ + 1 : 0;
        const std::size_t length = std::min(count - first, end - next);
        run(sums_ + next, first, length);
        first += length;
        place_ = next + length - 1;
    }
    phase = sums_[place_];
    return true;
}

}  // namespace larynth::block
