// SPDX-License-Identifier: MIT
#pragma once

#include "engine/SectionValues.h"

namespace larynth::block {

/// Sections side by side, one a lane. Every lane that runs is to be filled or silenced.
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

    /// The place of a lane, and the lane of a place. Neighbours lie in different halves: what the high half
    /// puts out is what the low half takes in, and the other way round it is one lane further down. The last
    /// place lies where a number is at hand.
    ///
    ///     lane    0 1 2 3   4 5 6 7
    ///     place   7 5 3 1   6 4 2 0
    static constexpr int CascadePlace(int lane) { return lane < 4 ? 7 - 2 * lane : 14 - 2 * lane; }
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
