// SPDX-License-Identifier: MIT
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "speech/FramePlanner.h"
#include "speech/Timing.h"

namespace larynth::test {

/// From "aa1:120 d:60 ax:80": phones with the stress of their syllable and durations in ms. Every phone
/// begins a syllable but those behind a '.'.
inline Utterance Phones(const std::string& text) {
    Utterance utterance;
    std::istringstream input(text);
    for (std::string word; input >> word;) {
        Phone phone;
        phone.startsSyllable = word.front() != '.';
        if (!phone.startsSyllable) word.erase(0, 1);
        const std::size_t colon = word.find(':');
        phone.duration = std::stod(word.substr(colon + 1)) / 1000;
        phone.name = word.substr(0, colon);
        if (phone.name.back() == '1') {
            phone.stress = 1;
            phone.name.pop_back();
        }
        utterance.phones.push_back(phone);
    }
    return utterance;
}

inline SpeechSettings UsualSettings() {
    SpeechSettings settings;
    settings.rate = kUsualRate;  // so that the durations are what is heard
    return settings;
}

/// An utterance's frames, 5 ms each.
inline std::vector<SpeechFrame> FramesOf(const Utterance& utterance,
                                         const SpeechSettings& settings = UsualSettings(),
                                         const Speaker& speaker = {}) {
    FramePlanner planner(PhoneTable::English(), speaker, settings, utterance);
    std::vector<SpeechFrame> frames;
    while (planner.Next()) frames.push_back(planner.Frame());
    return frames;
}

inline std::vector<SpeechFrame> FramesOf(const std::string& phones) { return FramesOf(Phones(phones)); }

}  // namespace larynth::test
