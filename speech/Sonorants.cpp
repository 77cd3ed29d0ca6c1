// SPDX-License-Identifier: MIT
#include <algorithm>

#include "speech/Gestures.h"

namespace larynth {
namespace {

constexpr double kEdge = 0.006;        // s; rise and fall of voicing between voiced phones
constexpr double kUnstressed = -1.5;   // dB
constexpr double kLongestDecay = 0.1;  // s; of voicing in front of silence
constexpr double kDecayShare = 0.6;    // of the phone, at most
constexpr double kBehindEnd = 0.01;    // s; how far a decay runs into the silence

constexpr double kNasalEdge = 0.008, kNasalDecay = 0.04;  // s
// The velum takes about 35 ms (Krakow 1993), half of it before the mouth closes.
constexpr double kVelumMovement = 0.035;  // s

}  // namespace

void SpeakVocalic(const SpokenPhones& phones, std::size_t i, Gestures& gestures) {
    const SpokenPhone& phone = phones[i];
    const bool isReduced = phone.stress == 0 && phone.entry->kind != PhoneClass::Glide;
    const double level = phone.entry->voicing.value_or(0.0) + (isReduced ? kUnstressed : 0.0);
    double fall = kEdge, end = phone.end;
    if (IsPause(phones.After(i))) {
        fall = std::min(kLongestDecay, kDecayShare * phone.Duration());
        end -= fall / 2 - kBehindEnd;
    }
    gestures.Add(Track::Voicing, phone.start, end, level, kEdge, fall);
}

void SpeakNasal(const SpokenPhones& phones, std::size_t i, Gestures& gestures) {
    const SpokenPhone& phone = phones[i];
    const double fall = IsPause(phones.After(i)) ? kNasalDecay : kNasalEdge;
    gestures.Add(Track::Voicing, phone.start, phone.end, phone.entry->voicing.value_or(0.0), kNasalEdge,
                 fall);
    gestures.Add(Track::Nasality, phone.start, phone.end, 0.0, kVelumMovement, kVelumMovement);
}

}  // namespace larynth
