// SPDX-License-Identifier: MIT
#pragma once

#include "engine/SectionValues.h"

namespace larynth::vector {

/// The sections of both tracts. Their states are left as the last sample leaves them.
struct Tracts {
    static constexpr int kParallelCount = 7, kCascadeCount = 6;

    SectionValues* parallel[kParallelCount];
    SectionValues* tilt;                    // in front of the cascade; null: voicing passes
    SectionValues* antiResonator;           // the cascade's first section
    SectionValues* cascade[kCascadeCount];  // its resonators
};

/// What goes through the tracts. All arrays have room.
struct TractSamples {
    const double* voicing;     // in front of the tilt
    const double* aspiration;  // joins behind it
    const double* frication;   // into the parallel sections
    const double* bypassed;    // the frication times the bypass gain beside them
    double* sum;               // out: parallel + cascade
};

}  // namespace larynth::vector
