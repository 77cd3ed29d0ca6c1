// SPDX-License-Identifier: MIT
#pragma once

#include "engine/FilterComponent.h"
#include "engine/Resonator.h"

namespace larynth {

/// Spectral tilt of the voicing: a low-pass with its resonance just above 0 Hz, its cut-off falling as TL
/// rises.
class TiltFilter final : public FilterComponent {
  public:
    /// Sets the tilt TL (0 to 41; below 0 counts as 0, above 41 as 41) at sample frequency fs (Hz).
    ///
    /// Designs only when TL differs from the tilt in force, so a change of fs alone keeps the old design, and
    /// nothing happens for fs = 0 or NaN. A TL above 41 always differs: it is compared before it is limited.
    void SetTilt(int TL, double fs);

    /// With tilt 0 the input itself; the section then stands still.
    double Process(double x) override { return IsTilting() ? resonator_.Process(x) : x; }

    /// True while the tilt is not 0.
    bool IsTilting() const { return TL_ != 0; }

    Resonator& Section() { return resonator_; }

  private:
    int TL_ = 0;
    Resonator resonator_;
};

}  // namespace larynth
