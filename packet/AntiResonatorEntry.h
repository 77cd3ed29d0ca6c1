// SPDX-License-Identifier: MIT
#pragma once

#include "packet/ResonatorEntry.h"

namespace larynth {

/// One antiresonator of a packet, y[n] = A·x[n] + B·x[n−1] + C·x[n−2]: the reciprocal of the resonator with
/// the same F and BW, times G.
///
/// With F exactly 0 it passes its input, whatever the gain, and the coefficients are computed again at every
/// read. The way back has no fallback: coefficients without a pair of conjugate zeros give no numbers.
class AntiResonatorEntry final : public ResonatorEntry {
  protected:
    void FBToABC(double T, PolePosition& position) noexcept override;
    void ABCToFB(double T) noexcept override;
};

}  // namespace larynth
