// SPDX-License-Identifier: MIT
#include <algorithm>

#include "speech/Allophones.h"
#include "speech/Gestures.h"
#include "speech/VoiceOnset.h"

namespace larynth {
namespace {

constexpr double kClosureTilt = 12.0;  // dB; behind a closure only the walls' vibration is heard
constexpr double kClosureRise = 0.012, kClosureFall = 0.006;             // s
constexpr double kTiltFrom = 0.005, kTiltTo = 0.003;                     // s inside of the closure
constexpr double kVoicedRelease = -4.0;                                  // dB
constexpr double kReleaseRise = 0.006, kReleaseFall = 0.004;             // s
constexpr double kBurstRise = 0.003, kBurstFall = 0.018;                 // s
constexpr double kBurstNoSonorant = -10.0;                               // dB; an unheard release is weaker
constexpr double kBurstColourBefore = 0.008, kBurstColourAfter = 0.015;  // s
constexpr double kBurstBeyond = 0.004;                                   // s into the next phone
constexpr double kAspiration = -6.0, kAspirationFrication = -30.0;       // dB
constexpr double kAspirationNoSonorant = -8.0;                           // dB
constexpr double kAspirationRise = 0.006, kAspirationFall = 0.02;        // s
constexpr double kAspirationDelay = 0.004, kFricationDelay = 0.005;      // s behind release and burst
constexpr double kColourDelay = 0.012, kColourBeyond = 0.01;             // s

constexpr double kAffricateClosure = 0.42;                              // share of the length
constexpr double kAffricateRise = 0.006, kAffricateFall = 0.02;         // s
constexpr double kAffricateVoicing = -16.0, kAffricateRelease = -14.0;  // dB
constexpr double kEdge = 0.01;                                          // s

bool IsClosure(const PhoneEntry& entry) {
    return entry.kind == PhoneClass::Stop || entry.kind == PhoneClass::Affricate;
}

void SpeakClosure(const SpokenPhone& phone, double release, double voicing, Gestures& gestures) {
    gestures.Add(Track::Voicing, phone.start, release, voicing, kClosureRise, kClosureFall);
    gestures.tilts.push_back({phone.start + kTiltFrom, release - kTiltTo, kClosureTilt});
}

void SpeakAspiration(const SpokenPhone& phone, double release, double weaker, Gestures& gestures) {
    const double burst = phone.entry->burst;
    gestures.Add(Track::Aspiration, release + kAspirationDelay, phone.end, kAspiration + weaker,
                 kAspirationRise, kAspirationFall);
    gestures.Add(Track::Frication, release + burst + kFricationDelay, phone.end, kAspirationFrication,
                 kAspirationRise, kAspirationFall);
    gestures.colours.push_back(
        {release + burst + kColourDelay, phone.end + kColourBeyond, AspirationColour()});
    gestures.openings.push_back({release, phone.end});
}

}  // namespace

void SpeakStop(const SpokenPhones& phones, std::size_t i, Gestures& gestures) {
    const SpokenPhone& phone = phones[i];
    const PhoneEntry& after = phones.After(i);
    const PhoneEntry& entry =
        VariantBeside(*phone.entry, IsPause(after) ? phones.Before(i).end[1] : after.start[1]);
    const bool isBeforeSonorant = IsSonorant(after);
    const double release = phone.end - VoiceOnsetTime(phones, i);
    if (entry.voiced) {
        SpeakClosure(phone, release, entry.voicing.value_or(0.0), gestures);
        if (isBeforeSonorant) {
            gestures.Add(Track::Voicing, release, phone.end, kVoicedRelease, kReleaseRise, kReleaseFall);
        }
    }
    if (IsClosure(after) || !entry.frication) return;
    const double burstEnd = std::min(release + entry.burst, phone.end + kBurstBeyond);
    gestures.Add(Track::Frication, release, burstEnd,
                 *entry.frication + (isBeforeSonorant ? 0.0 : kBurstNoSonorant), kBurstRise, kBurstFall);
    gestures.colours.push_back(
        {release - kBurstColourBefore, release + entry.burst + kBurstColourAfter, *entry.bands});
    if (!entry.voiced)
        SpeakAspiration(phone, release, isBeforeSonorant ? 0.0 : kAspirationNoSonorant, gestures);
}

void SpeakAffricate(const SpokenPhones& phones, std::size_t i, Gestures& gestures) {
    const SpokenPhone& phone = phones[i];
    const PhoneEntry& entry = *phone.entry;
    const double release = phone.start + kAffricateClosure * phone.Duration();
    gestures.Add(Track::Frication, release, phone.end, *entry.frication, kAffricateRise, kAffricateFall);
    gestures.colours.push_back({release - kAffricateRise, phone.end + kAffricateFall / 2, *entry.bands});
    if (!entry.voiced) return;
    SpeakClosure(phone, release, kAffricateVoicing, gestures);
    gestures.Add(Track::Voicing, release, phone.end, kAffricateRelease, kEdge, kEdge);
}

}  // namespace larynth
