// SPDX-License-Identifier: MIT
#pragma once

#include "engine/Frame.h"
#include "engine/ResonatorPairs.h"

namespace larynth::vector {

/// The sections of both tracts. Their states are left as the last sample leaves them.
struct Tracts {
    static constexpr int kParallelCount = Frame::kParallelPoles, kCascadeCount = Frame::kCascadePoles;

    Section<Double2>* parallel;    // its resonators in pairs
    SectionValues* tilt;           // in front of the cascade; null: voicing passes
    SectionValues* antiResonator;  // the cascade's first section
    Section<Double2>* cascade;     // its resonators in pairs
};

/// What goes through the tracts. All arrays have room.
struct TractSamples {
    const double* voicing;     // in front of the tilt
    const double* aspiration;  // joins behind it
    const double* frication;   // into the parallel sections
    const double* bypassed;    // the frication times the bypass gain beside them
    double* sum;               // out: parallel + cascade

    // What the tracts leave in between: what enters the antiresonator, behind the two samples before the
    // stretch; what leaves it; what leaves the branch.
    double *mixed, *delayed, *branch;
};

}  // namespace larynth::vector
