// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// How all utterances are said.
struct SpeechSettings {
    static constexpr double kSlowest = 80.0, kFastest = 600.0;

    double rate = 175.0;   ///< Words a minute, from kSlowest to kFastest.
    double pitch = 1.0;    ///< Factor on the speaker's F0.
    double range = 1.0;    ///< Factor on the distance of F0 from its mean, in octaves; 0 is monotone.
    double volume = 1.0;   ///< Factor on the amplitude.
    int frameLength = 80;  ///< Samples, at kSpeechSampleFreq.
};

inline constexpr double kSpeechSampleFreq = 16000.0;  ///< Hz

}  // namespace larynth
