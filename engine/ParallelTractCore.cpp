// SPDX-License-Identifier: MIT
#include "engine/ParallelTractCore.h"

namespace larynth {

ParallelTractCore::ParallelTractCore() : resonators_(7, Resonator(1.0, 0.0, 0.0)) {}

}  // namespace larynth
