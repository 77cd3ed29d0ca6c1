// SPDX-License-Identifier: MIT
#include "speech/VoiceOnset.h"

#include <algorithm>

namespace larynth {
namespace {

constexpr double kUnstressedShare = 0.85;
constexpr double kBehindFricative = 0.018;     // s
constexpr double kVoicelessNoSonorant = 0.01;  // s; a release into a consonant or silence
constexpr double kLeastClosure = 0.55;         // share of a voiceless stop
constexpr double kMostVoicedRelease = 0.3;     // share of a voiced stop

}  // namespace

double VoiceOnsetTime(const SpokenPhones& phones, std::size_t i) {
    const SpokenPhone& stop = phones[i];
    const PhoneEntry& before = phones.Before(i);
    if (stop.entry->voiced) return std::min(stop.entry->onset, kMostVoicedRelease * stop.Duration());
    double onset = stop.entry->onset * (stop.stress > 0 ? 1.0 : kUnstressedShare);
    if (before.kind == PhoneClass::Fricative && !before.voiced && !stop.startsSyllable)
        onset = kBehindFricative;
    if (!IsSonorant(phones.After(i))) onset = kVoicelessNoSonorant;
    return std::min(onset, (1.0 - kLeastClosure) * stop.Duration());
}

}  // namespace larynth
