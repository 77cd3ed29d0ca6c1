// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace larynth {

/// A marker's text at the place where it came out.
struct Label {
    std::size_t sample;  ///< Number of samples in front of it.
    std::string text;    ///< UTF-8.
};

/// A rendered utterance: 16-bit samples, one channel, and its markers in order.
struct Sound {
    std::vector<short> samples;
    std::vector<Label> labels;
};

/// The sound's markers, one a line: start, end, text, separated by tabs; times in seconds with six decimals.
/// A label ends where the next one starts, or with the sound.
std::string LabelText(const Sound& sound, double sampleFreq);

}  // namespace larynth
