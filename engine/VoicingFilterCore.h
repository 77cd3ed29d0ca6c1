// SPDX-License-Identifier: MIT
#pragma once

#include "engine/FilterComponent.h"
#include "engine/Flutter.h"
#include "engine/Frame.h"
#include "engine/TiltFilter.h"

namespace larynth {

/// The stage behind a voicing source: tilts its spectrum, and says how its fundamental frequency flutters.
class VoicingFilterCore final : public FilterComponent {
  public:
    static constexpr Frame::Sections kSections = Frame::Sections::None;

    void Take(const Frame& frame) {
        F0 = frame.F0;
        FL = frame.FL;
        FLT = frame.FLT;
        SetTilt(frame.TL, frame.SampleFreq());
    }

    /// Sets the tilt from an item's value: truncated toward zero, NaN counts as 0. What lies far outside the
    /// table of tilts is brought nearer first, as an int need not hold it.
    void SetTilt(double TL, double fs) {
        constexpr double kLimit = 1000.0;
        tilt_.SetTilt(TL > -kLimit ? static_cast<int>(TL < kLimit ? TL : kLimit) : 0, fs);
    }

    double Process(double x) override { return tilt_.Process(x); }

    /// Whether the source's F0 is to be moved behind each sample.
    bool Flutters() const { return Flutter::Applies(F0, FL); }

    /// The fluttering F0 (Hz) of the next sample.
    double NextF0() { return flutter_.Step(F0, FL, FLT); }

    TiltFilter& Tilt() { return tilt_; }
    Flutter& FlutterState() { return flutter_; }

    double F0 = 0.0;   ///< Hz, the centre of the flutter.
    double FL = 0.0;   ///< Largest excursion, a fraction of F0.
    double FLT = 0.0;  ///< 10⁻⁵ of flutter time per sample.

  private:
    TiltFilter tilt_;
    Flutter flutter_;
};

}  // namespace larynth
