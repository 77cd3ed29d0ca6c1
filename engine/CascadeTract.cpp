// SPDX-License-Identifier: MIT
#include "engine/CascadeTract.h"

namespace larynth {

CascadeTract::CascadeTract()
    : resonators_(6, Resonator(1.0, 0.0, 0.0)), antiResonators_(1, AntiResonator(1.0, 0.0, 0.0)) {}

}  // namespace larynth
