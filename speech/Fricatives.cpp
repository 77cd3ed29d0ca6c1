// SPDX-License-Identifier: MIT
#include "speech/Gestures.h"

namespace larynth {
namespace {

constexpr double kNoiseRise = 0.03, kNoiseFall = 0.025, kVoicingEdge = 0.012;  // s
constexpr double kDevoicedShare = 0.4;  // of a voiced fricative's length (Haggard 1978)

constexpr double kGlottal = -9.0, kGlottalFrication = -30.0;  // dB
constexpr double kVoicedH = -14.0;  // dB; behind a vowel, glide or nasal h keeps a murmur

}  // namespace

void SpeakFricative(const SpokenPhones& phones, std::size_t i, Gestures& gestures) {
    const SpokenPhone& phone = phones[i];
    const PhoneEntry& entry = *phone.entry;
    gestures.Add(Track::Frication, phone.start, phone.end, *entry.frication, kNoiseRise, kNoiseFall);
    gestures.colours.push_back({phone.start - kNoiseRise / 2, phone.end + kNoiseFall / 2, *entry.bands});
    if (!entry.voiced || !entry.voicing) return;
    const bool isDevoiced = IsPause(phones.After(i)) || !phones.After(i).voiced;
    const double end = phone.end - (isDevoiced ? kDevoicedShare * phone.Duration() : 0.0);
    gestures.Add(Track::Voicing, phone.start, end, *entry.voicing, kVoicingEdge, kVoicingEdge);
}

void SpeakAspirate(const SpokenPhones& phones, std::size_t i, Gestures& gestures) {
    const SpokenPhone& phone = phones[i];
    gestures.Add(Track::Aspiration, phone.start, phone.end, kGlottal, kNoiseRise, kVoicingEdge);
    gestures.Add(Track::Frication, phone.start, phone.end, kGlottalFrication, kNoiseRise, kVoicingEdge);
    gestures.colours.push_back({phone.start, phone.end, AspirationColour()});
    gestures.openings.push_back({phone.start, phone.end});
    if (phones.Before(i).voiced && IsSonorant(phones.Before(i))) {
        gestures.Add(Track::Voicing, phone.start, phone.end, kVoicedH, kVoicingEdge, kVoicingEdge);
    }
}

}  // namespace larynth
