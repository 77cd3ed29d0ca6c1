// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "engine/AntiResonator.h"
#include "engine/FilterComponent.h"
#include "engine/Frame.h"
#include "engine/ResonatorPairs.h"

namespace larynth {

/// The vocal tract as sections in series: nasal zero, nasal pole, F1 … F5. A new tract passes its input on.
class CascadeTract final : public FilterComponent {
  public:
    static constexpr Frame::Sections kSections = Frame::Sections::Cascade;

    void Take(const Frame& frame) {
        poles_.Take(frame.sections, Frame::kFirstCascadePole);
        const auto [A, B, C] = frame.sections.At(Frame::kFirstCascadeZero);
        zero_.SetABC(A, B, C);
    }

    double Process(double x) override { return poles_.InSeries(zero_.Process(x)); }

    /// Nasal pole, F1 … F5.
    ResonatorPairs<Frame::kCascadePoles>& Poles() { return poles_; }

    /// The nasal zero.
    AntiResonator& Zero() { return zero_; }
    static_assert(Frame::kCascadeZeros == 1);

  private:
    AntiResonator zero_;
    ResonatorPairs<Frame::kCascadePoles> poles_;
};

}  // namespace larynth
