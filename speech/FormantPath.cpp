// SPDX-License-Identifier: MIT
#include "speech/FormantPath.h"

#include <algorithm>

#include "engine/Trigonometry.h"
#include "speech/Boundaries.h"
#include "speech/VoiceOnset.h"

namespace larynth {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kBetweenVowels = 0.04;    // s; a vowel's transition where it owns the boundary itself
constexpr double kGlideTransition = 0.03;  // s
constexpr double kDiphthongOnset = 0.30, kDiphthongOffset = 0.25;  // most of its length that transitions take
constexpr double kMostTransitions = 0.8;                           // of a phone's length
// Of the share of the transitions that has no room, the share of the way from target to boundaries that is
// not gone.
constexpr double kUndershootPerLack = 0.2;
constexpr double kEarlyMovement = 0.3;  // of the voice onset time, in which the formants move already
constexpr std::array kLeastDistance{150.0, 180.0};  // Hz, F2 over F1, F3 over F2

// Shape of the rounding off, and the distance of its points.
constexpr std::array kRounding{0.25, 0.75, 1.0, 0.75, 0.25};
constexpr double kRoundingSum = 3.0, kRoundingStep = 0.005;  // s

Formants Between(const Formants& a, const Formants& b, double share) {
    Formants value{};
    for (std::size_t k = 0; k < kRuledFormants; ++k) value[k] = a[k] + (b[k] - a[k]) * share;
    return value;
}

}  // namespace

// Formants begin to move towards the vowel while a voiceless stop is still aspirated.
double FormantPath::BoundaryTime(std::size_t i) const {
    const PhoneEntry& entry = phones_.Entry(i);
    const bool isAspirated = entry.kind == PhoneClass::Stop && !entry.voiced && IsVocalic(phones_.After(i));
    return phones_[i].end - (isAspirated ? kEarlyMovement * VoiceOnsetTime(phones_, i) : 0.0);
}

FormantPath::Stretch FormantPath::Plan(std::size_t i) const {
    const bool isFirst = i == 0, isLast = i + 1 == phones_.size();
    Stretch stretch;
    const Formants own = phones_.Entry(i).start;
    const Formants to = isLast ? (isFirst ? own : BoundaryAfter(phones_, i - 1)) : BoundaryAfter(phones_, i);
    stretch.times[0] = isFirst ? phones_[i].start : BoundaryTime(i - 1);
    stretch.values[0] = isFirst ? to : BoundaryAfter(phones_, i - 1);
    stretch.times[1] = BoundaryTime(i);
    stretch.values[1] = to;
    if (IsVocalic(phones_.Entry(i))) AddTargets(i, stretch);
    return stretch;
}

// Undershoot: where the transitions do not leave room for both targets, they are passed at a distance
// (Lindblom 1963).
void FormantPath::AddTargets(std::size_t i, Stretch& stretch) const {
    const PhoneEntry& entry = phones_.Entry(i);
    const PhoneEntry& before = phones_.Before(i);
    const PhoneEntry& after = phones_.After(i);
    const double length = stretch.times[1] - stretch.times[0];
    double in = OwnsBoundary(before, entry) ? before.transition : kBetweenVowels;
    double out = OwnsBoundary(after, entry) ? after.transition : kBetweenVowels;
    if (entry.kind == PhoneClass::Glide) in = out = kGlideTransition;
    if (entry.kind == PhoneClass::Diphthong) {
        in = std::min(in, kDiphthongOnset * length);
        out = std::min(out, kDiphthongOffset * length);
    }
    Formants first = entry.start, second = entry.end;
    const Formants middle = Between(stretch.values[0], stretch.values[1], 0.5);
    if (in + out > kMostTransitions * length) {
        const double share = kMostTransitions * length / (in + out);
        const double undershoot = entry.kind == PhoneClass::Vowel ? kUndershootPerLack * (1.0 - share) : 0.0;
        first = Between(first, middle, undershoot);
        second = Between(second, middle, undershoot);
        in *= share;
        out *= share;
    }
    stretch.count = 4;
    stretch.times = {stretch.times[0], stretch.times[0] + in, stretch.times[1] - out, stretch.times[1]};
    stretch.values = {stretch.values[0], Between(first, middle, entry.yield),
                      Between(second, middle, entry.yield), stretch.values[1]};
}

Formants FormantPath::Raw(double time) {
    while (latest_ > 0 && time < BoundaryTime(latest_ - 1)) --latest_;
    while (latest_ + 1 < phones_.size() && time >= BoundaryTime(latest_)) ++latest_;
    while (stretches_.size() <= latest_) stretches_.push_back(Plan(stretches_.size()));
    const Stretch& stretch = stretches_[latest_];
    std::size_t k = 1;
    while (k + 1 < stretch.count && time >= stretch.times[k]) ++k;
    const double length = stretch.times[k] - stretch.times[k - 1];
    const double place = length > 0.0 ? std::clamp((time - stretch.times[k - 1]) / length, 0.0, 1.0) : 1.0;
    return Between(stretch.values[k - 1], stretch.values[k], 0.5 - 0.5 * Cosine(kPi * place));
}

Formants FormantPath::At(double time) {
    Formants sum{};
    for (std::size_t n = 0; n < kRounding.size(); ++n) {
        const Formants value = Raw(time + kRoundingStep * (static_cast<double>(n) - 2.0));
        for (std::size_t k = 0; k < kRuledFormants; ++k) sum[k] += value[k] * (kRounding[n] / kRoundingSum);
    }
    for (std::size_t k = 1; k < kRuledFormants; ++k)
        sum[k] = std::max(sum[k], sum[k - 1] + kLeastDistance[k - 1]);
    return sum;
}

}  // namespace larynth
