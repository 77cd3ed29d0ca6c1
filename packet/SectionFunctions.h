// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// The two functions that a section's coefficients cost, kept from frame to frame: where neither their
/// arguments nor the sample time change, nothing is computed.
class SectionFunctions {
  public:
    /// For F and BW in Hz and the sample time T in s.
    void Compute(double F, double BW, double T) noexcept;

    // Pi with ten digits, the value that the engine's sections are defined with: more digits give other
    // samples. Members, because this room cannot see the engine's constants, while its users see both.
    static constexpr double kPi10 = 3.141592654;
    static constexpr double kTwoPi10 = 6.283185308;

    double Radius() const noexcept { return radius_; }  ///< exp(−pi·BW·T), the distance of the pole from 0.
    double Cosine() const noexcept { return cosine_; }  ///< cos(2·pi·F·T), of the pole's angle.

  private:
    double F_ = 0.0, BW_ = 0.0, T_ = 0.0;
    double radius_ = 1.0, cosine_ = 1.0;  // those of 0
};

}  // namespace larynth
