// SPDX-License-Identifier: MIT
#include "speech/Gestures.h"

#include <algorithm>

#include "engine/Exponential.h"

namespace larynth {

double Amplitude(double decibels) {
    constexpr double kNepersPerDecibel = 0.115129254649702284;  // ln 10 / 20
    return Exponential(kNepersPerDecibel * decibels);
}

double Gesture::At(double time) const noexcept {
    const double risen = (time - from) / rise + 0.5, left = (to - time) / fall + 0.5;
    return level * std::clamp(std::min(risen, left), 0.0, 1.0);
}

void Gestures::Add(Track track, double from, double to, double decibels, double rise, double fall) {
    if (to > from) levels.push_back({track, from, to, Amplitude(decibels), rise, fall});
}

const NoiseBands& AspirationColour() {
    static constexpr NoiseBands kBands{-60, -60, -60, -60, -20, -4, 0, -26};
    return kBands;
}

Gestures GesturesOf(const SpokenPhones& phones, std::size_t i) {
    Gestures gestures;
    switch (phones.Entry(i).kind) {
        case PhoneClass::Vowel:
        case PhoneClass::Diphthong:
        case PhoneClass::Glide:
            SpeakVocalic(phones, i, gestures);
            break;
        case PhoneClass::Nasal:
            SpeakNasal(phones, i, gestures);
            break;
        case PhoneClass::Fricative:
            SpeakFricative(phones, i, gestures);
            break;
        case PhoneClass::Aspirate:
            SpeakAspirate(phones, i, gestures);
            break;
        case PhoneClass::Stop:
            SpeakStop(phones, i, gestures);
            break;
        case PhoneClass::Affricate:
            SpeakAffricate(phones, i, gestures);
            break;
        case PhoneClass::Pause:
            break;
    }
    return gestures;
}

}  // namespace larynth
