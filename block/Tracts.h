// SPDX-License-Identifier: MIT
#pragma once

#include "engine/SectionValues.h"

namespace larynth::block {

/// Sections side by side, one a lane. Every lane is to be filled or silenced.
struct alignas(32) SectionLanes {
    static constexpr int kLanes = 8;

    double A[kLanes], B[kLanes], C[kLanes];
    double state1[kLanes], state2[kLanes];

    void Fill(int lane, const SectionValues& section) noexcept {
        A[lane] = section.A;
        B[lane] = section.B;
        C[lane] = section.C;
        state1[lane] = section.state1;
        state2[lane] = section.state2;
    }
    void Silence(int lane) noexcept { Fill(lane, {0.0, 0.0, 0.0}); }
    void GiveState(int lane, SectionValues& section) const noexcept {
        section.state1 = state1[lane];
        section.state2 = state2[lane];
    }
};

/// Both tracts, with the tilt section in front of the cascade.
struct Tracts {
    /// Places along the cascade: the tilt, the antiresonator, then the resonators.
    static constexpr int kTilt = 0, kAntiResonator = 1, kCascadeCount = 8;
    static constexpr int kParallelCount = 7;  // lanes 0 to 6 of the branch

    /// The lane of a place: 7, 3, 6, 2, 5, 1, 4, 0. Neighbours lie in different halves, so that handing on an
    /// output mostly is no move at all, and the last one lies where a number is at hand.
    static constexpr int CascadeLane(int place) { return (place % 2 == 0 ? 7 : 3) - place / 2; }

    SectionLanes cascade, parallel;
    bool tilting = false;         // false: the tilt section passes its input and stands still
    double bypass = 0.0;          // gain beside the parallel sections
    double parallelOutput = 0.0;  // the last sample's
};

/// What goes through the tracts.
struct TractSamples {
    const double* voicing;     // in front of the tilt
    const double* aspiration;  // joins behind it
    const double* frication;   // into the parallel branch
    double* sum;               // out: parallel + cascade
};

}  // namespace larynth::block
