// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// Where the pole of a section lies that F and BW describe: the exponential and the cosine that its
/// coefficients cost. Kept from frame to frame, it computes what has other arguments than before and nothing
/// else.
class PolePosition {
  public:
    /// For F and BW in Hz and the sample time T in s.
    void Compute(double F, double BW, double T) noexcept;

    // Pi with ten digits: more digits give other samples. The engine's constants are the same, but this room
    // does not include the engine.
    static constexpr double kPi10 = 3.141592654;
    static constexpr double kTwoPi10 = 6.283185308;

    double Radius() const noexcept { return radius_; }  ///< exp(−pi·BW·T), the distance of the pole from 0.
    double Cosine() const noexcept { return cosine_; }  ///< cos(2·pi·F·T), of the pole's angle.

  private:
    double F_ = 0.0, BW_ = 0.0, T_ = 0.0;
    double radius_ = 1.0, cosine_ = 1.0;  // those of 0
};

}  // namespace larynth
