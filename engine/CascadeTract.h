// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <span>

#include "engine/AntiResonator.h"
#include "engine/FilterComponent.h"
#include "engine/Frame.h"
#include "engine/Resonator.h"

namespace larynth {

/// The vocal tract as sections in series: nasal zero, nasal pole, F1 … F5. A new tract passes its input on.
class CascadeTract final : public FilterComponent {
  public:
    static constexpr Frame::Sections kSections = Frame::Sections::Cascade;

    void Take(const Frame& frame) {
        SetCoefficients<Resonator>(resonators_, frame.cascadePoles);
        SetCoefficients<AntiResonator>(antiResonators_, frame.cascadeZeros);
    }

    double Process(double x) override;

    /// Position 0 is the nasal pole, 1 to 5 are the formants.
    std::span<Resonator> Resonators() { return resonators_; }

    /// Position 0 is the nasal zero.
    std::span<AntiResonator> AntiResonators() { return antiResonators_; }

  private:
    std::array<Resonator, Frame::kCascadePoles> resonators_;
    std::array<AntiResonator, Frame::kCascadeZeros> antiResonators_;
};

inline double CascadeTract::Process(double x) {
    for (AntiResonator& section : antiResonators_) x = section.Process(x);
    for (Resonator& section : resonators_) x = section.Process(x);
    return x;
}

}  // namespace larynth
