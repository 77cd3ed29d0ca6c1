// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace larynth {

/// Designs a second-order shelf filter for an LFilter with two feedback and three feed-forward coefficients.
///
/// Kind 'l' has gain G at 0 Hz and 1 at half the sample frequency fs, kind 'h' the reverse. F is the corner
/// frequency (Hz), P3 and P4 shape the slope. The feed-forward values are scaled so that the mean
/// power gain over the part of the band away from the shelf is about 1.
///
/// Both arrays are replaced. Parameters that make a divisor vanish (G = 1 with P3 = P4 = 0) give coefficients
/// that are not finite.
void DesignShelfFilter(double G, double F, double P3, double P4, double fs, std::vector<double>& feedback,
                       std::vector<double>& feedForward, char kind);

}  // namespace larynth
