// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "python/Voices.h"

namespace larynth {

/// How a synthesizer is to sound, from plain values in the order in which the package passes them.
inline SynthesizerSettings MakeSettings(double sampleFreq, bool isFilter, double volume, double outputGain,
                                        const std::optional<PlainVoice>& voice,
                                        const std::optional<Waveform>& wave,
                                        std::optional<std::uint32_t> seed) {
    return {.sampleFreq = sampleFreq,
            .tract = isFilter ? TractForm::Filter : TractForm::Resonator,
            .volume = volume,
            .outputGain = outputGain,
            .voice = SettingsOf(voice),
            .wave = wave,
            .seed = seed};
}

}  // namespace larynth
