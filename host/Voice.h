// SPDX-License-Identifier: MIT
/// Voices and voicing sources from what a user wrote down. All functions raise std::runtime_error.
#pragma once

#include <larynth/Larynth.h>

#include "host/tables/VoiceFile.h"

namespace larynth {

/// A wave-table source whose table is built for sample frequency `sampleFreq` (Hz): its pitch is exact there.
ComPtr<ITTSVoicingSource> MakeWaveSource(const Waveform& wave, double sampleFreq);

/// A voice for sounds of sample frequency `sampleFreq` (Hz).
ComPtr<ITTSVoice> MakeVoice(const VoiceSettings& settings, double sampleFreq);

}  // namespace larynth
