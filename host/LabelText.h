// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "host/Sound.h"

namespace larynth {

/// The sound's markers, one a line: start, end, text, separated by tabs; times in seconds with six decimals.
/// A label ends where the next one starts, or with the sound.
std::string LabelText(const Sound& sound, double sampleFreq);

}  // namespace larynth
