// SPDX-License-Identifier: MIT
#pragma once

#include "speech/SpokenPhone.h"

namespace larynth {

/// Time from the release of stop `i` to the voicing of what follows, s. Voiceless stops are aspirated, less
/// in front of unstressed vowels, and hardly behind a voiceless fricative of their own syllable (Lisker and
/// Abramson 1964; Klatt 1975). It leaves room for the closure.
double VoiceOnsetTime(const SpokenPhones& phones, std::size_t i);

}  // namespace larynth
