// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "engine/FilterComponent.h"
#include "engine/Frame.h"
#include "engine/Multiplier.h"
#include "engine/ResonatorPairs.h"

namespace larynth {

/// The parallel branch (Klatt 1980): seven resonators and a bypass share one input, their outputs are added.
/// A new branch has identity sections and bypass gain 1.
class ParallelTractCore final : public FilterComponent {
  public:
    static constexpr Frame::Sections kSections = Frame::Sections::Parallel;

    void Take(const Frame& frame) {
        poles_.Take(frame.sections, Frame::kFirstParallelPole);
        bypass_.SetGain(frame.AB);
    }

    /// The bypass comes first: rounding is part of the result.
    double Process(double x) override { return poles_.SideBySide(x, bypass_.Process(x)); }

    ResonatorPairs<Frame::kParallelPoles>& Poles() { return poles_; }
    Multiplier& Bypass() { return bypass_; }

  private:
    ResonatorPairs<Frame::kParallelPoles> poles_;
    Multiplier bypass_{1.0};
};

}  // namespace larynth
