// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>

namespace larynth::block {

/// The sums 0, T, T + T, … of a sample time, each rounded as the running phase of a pitch period is. A period
/// begins at exactly 0, so its phases are these very numbers: they can be read off instead of being added up,
/// which is a chain of operations that wait for each other.
class PhaseTable {
  public:
    /// Writes the phase of each of the next samples and moves `phase` (s) to the last. `T` is the sample
    /// time; the period at sample i has the length periodAt(i); both in s.
    template <class PeriodAt>
    void Advance(double T, double& phase, std::span<double> phases, PeriodAt&& periodAt);

  private:
    /// Enough for 6 Hz at 22050 Hz; longer periods are added up.
    static constexpr std::size_t kMostSums = 4096;

    /// Looks the phase up and sees to it that the sums reach `count` samples further; false when they cannot.
    bool Reaches(double T, double phase, std::size_t count) noexcept;

    double T_ = 0.0;
    std::size_t count_ = 0;  // of the sums, which are made as far as they are needed
    std::size_t place_ = 0;  // of the phase among the sums
    double sums_[kMostSums];
};

template <class PeriodAt>
void PhaseTable::Advance(double T, double& phase, std::span<double> phases, PeriodAt&& periodAt) {
    if (Reaches(T, phase, phases.size())) {
        std::size_t place = place_;
        for (std::size_t i = 0; i < phases.size(); ++i) {
            if (sums_[++place] > periodAt(i)) place = 0;
            phases[i] = sums_[place];
        }
        place_ = place;
        phase = sums_[place];
        return;
    }
    double t = phase;
    for (std::size_t i = 0; i < phases.size(); ++i) {
        t = t + T;
        if (t > periodAt(i)) t = 0.0;
        phases[i] = t;
    }
    phase = t;
}

}  // namespace larynth::block
