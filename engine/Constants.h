// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// Pi with ten digits. Resonators, voicing and flutter are defined with this value, not with the full one:
/// more digits give other samples.
inline constexpr double kPi10 = 3.141592654;

/// Twice kPi10.
inline constexpr double kTwoPi10 = 6.283185308;

/// The zero test of parameters that switch something off: a NaN switches it off as well.
constexpr bool IsZeroOrNan(double x) { return !(x < 0.0 || x > 0.0); }

}  // namespace larynth
