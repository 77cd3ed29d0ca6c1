// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>

namespace larynth::vector {

/// The sums 0, T, T + T, … of a sample time T (s), each rounded as the running phase of a pitch period is. A
/// period begins at exactly 0, so its phases are these very numbers: they can be read off instead of being
/// added up, which is a chain of operations that wait for each other. What the table does not hold is added
/// up: phases that began with another T, and very long periods.
class PhaseTable {
  public:
    /// Writes the phases of the next samples, all of them in periods of the length T0 (s), and moves `phase`
    /// to the last.
    void Write(double T, double& phase, double T0, std::span<double> phases) noexcept;

    /// The same with a period of length T0[i] at sample i.
    void Write(double T, double& phase, const double* T0, std::span<double> phases) noexcept;

  private:
    /// Enough for 6 Hz at 22050 Hz.
    static constexpr std::size_t kMostSums = 4096;

    /// Looks the phase up and sees to it that the sums reach `count` samples further; false when they cannot.
    bool Reaches(double T, double phase, std::size_t count) noexcept;
    /// The place of the first sum beyond T0, or of the last sum.
    std::size_t PlaceBeyond(double T0) const noexcept;

    double T_ = 0.0;
    std::size_t count_ = 0;  // of the sums, which are made as far as they are needed
    std::size_t place_ = 0;  // of the phase among the sums
    double sums_[kMostSums];
};

}  // namespace larynth::vector
