// SPDX-License-Identifier: MIT
#include "speech/Timing.h"

#include <algorithm>

#include "engine/Exponential.h"

namespace larynth {
namespace {

constexpr double kLongestFirstPause = 0.02;  // s; nobody waits for a sound in front of the first phone

// How strongly a phone follows the tempo: an exponent. Only their ratios count, as the whole comes out as
// long as the tempo asks. Calibrated against what a speech recogniser takes for the phones that are meant.
struct Elasticity {
    double slower, faster;
};

// A vowel that yields so much to its neighbours is a reduced one, short at every tempo.
constexpr double kReducedYield = 0.3;

Elasticity ElasticityOf(const PhoneEntry& entry) {
    switch (entry.kind) {
        case PhoneClass::Vowel:
        case PhoneClass::Diphthong:
            return entry.yield > kReducedYield ? Elasticity{0.6, 1.25} : Elasticity{1.1, 1.25};
        case PhoneClass::Glide:
            return {0.3, 1.0};
        case PhoneClass::Nasal:
            return {0.6, 0.9};
        case PhoneClass::Fricative:
        case PhoneClass::Aspirate:
            return {0.9, 0.8};
        case PhoneClass::Stop:
        case PhoneClass::Affricate:
            return {0.3, 0.65};
        case PhoneClass::Pause:
            break;
    }
    return {1.0, 1.0};
}

double Scaled(const SpokenPhone& phone, double logTempo) {
    const Elasticity elasticity = ElasticityOf(*phone.entry);
    const double exponent = logTempo < 0.0 ? elasticity.slower : elasticity.faster;
    const double scaled = phone.end * Exponential(-exponent * logTempo);
    return std::max(scaled, std::min(phone.entry->shortest, phone.end));
}

// The logarithm of the tempo that, with the classes' elasticities, makes the speech as long as `tempo` would
// evenly.
double Balanced(std::span<const SpokenPhone> phones, double tempo) {
    const auto total = [&](auto&& duration) {
        double sum = 0.0;
        for (const SpokenPhone& phone : phones) {
            if (!IsPause(*phone.entry)) sum += duration(phone);
        }
        return sum;
    };
    const double wanted = total([](const SpokenPhone& phone) { return phone.end; }) / tempo;
    double low = -3.0, high = 3.0;  // twenty times slower or faster
    constexpr int kSteps = 24;      // halvings: to 10^-6
    for (int step = 0; step < kSteps; ++step) {
        const double middle = 0.5 * (low + high);
        const bool isLonger = total([&](const SpokenPhone& phone) { return Scaled(phone, middle); }) > wanted;
        (isLonger ? low : high) = middle;
    }
    return high;
}

}  // namespace

void PutInTime(std::span<SpokenPhone> phones, double tempo) {
    if (!phones.empty() && IsPause(*phones.front().entry)) {
        phones.front().end = std::min(phones.front().end, kLongestFirstPause);
    }
    const double logTempo = Balanced(phones, tempo);
    double time = 0.0;
    for (SpokenPhone& phone : phones) {
        const double own = Logarithm(phone.prosody.rate);
        phone.start = time;
        time += Scaled(phone, (IsPause(*phone.entry) ? Logarithm(tempo) : logTempo) + own);
        phone.end = time;
    }
}

}  // namespace larynth
