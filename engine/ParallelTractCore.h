// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <span>

#include "engine/FilterComponent.h"
#include "engine/Frame.h"
#include "engine/Multiplier.h"
#include "engine/Resonator.h"

namespace larynth {

/// The parallel branch (Klatt 1980): seven resonators and a bypass share one input, their outputs are added.
/// A new branch has identity sections and bypass gain 1.
class ParallelTractCore final : public FilterComponent {
  public:
    static constexpr Frame::Sections kSections = Frame::Sections::Parallel;

    void Take(const Frame& frame) {
        SetCoefficients<Resonator>(resonators_, frame.parallelPoles);
        bypass_.SetGain(frame.AB);
    }

    double Process(double x) override;

    std::span<Resonator> Resonators() { return resonators_; }
    Multiplier& Bypass() { return bypass_; }

  private:
    std::array<Resonator, Frame::kParallelPoles> resonators_;
    Multiplier bypass_{1.0};
};

inline double ParallelTractCore::Process(double x) {
    double y = bypass_.Process(x);  // bypass first: rounding is part of the result
    for (Resonator& section : resonators_) y = y + section.Process(x);
    return y;
}

}  // namespace larynth
