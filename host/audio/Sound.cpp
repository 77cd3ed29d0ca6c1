// SPDX-License-Identifier: MIT
#include "host/audio/Sound.h"

#include "host/tables/Text.h"

namespace larynth {

std::string LabelText(const Sound& sound, double sampleFreq) {
    constexpr int kDecimals = 6;
    const auto seconds = [&](std::size_t sample) {
        return FixedText(static_cast<double>(sample) / sampleFreq, kDecimals);
    };
    std::string text;
    for (std::size_t i = 0; i < sound.labels.size(); ++i) {
        const bool last = i + 1 == sound.labels.size();
        const std::size_t end = last ? sound.samples.size() : sound.labels[i + 1].sample;
        text += seconds(sound.labels[i].sample) + '\t' + seconds(end) + '\t' + sound.labels[i].text + '\n';
    }
    return text;
}

}  // namespace larynth
