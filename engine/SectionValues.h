// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// A second-order section as plain numbers, for code that runs many of them at once.
struct SectionValues {
    double A, B, C;
    double state1 = 0.0, state2 = 0.0;  ///< The last signal value and the one before: outputs of a resonator,
                                        ///< inputs of an antiresonator.
};

}  // namespace larynth
