// SPDX-License-Identifier: MIT
#include "speech/Boundaries.h"

#include <optional>

#include "speech/Allophones.h"

namespace larynth {
namespace {

int Rank(const PhoneEntry& entry) {
    switch (entry.kind) {
        case PhoneClass::Pause:
        case PhoneClass::Aspirate:
            return 0;  // have no place of their own
        case PhoneClass::Vowel:
        case PhoneClass::Diphthong:
            return 1;
        case PhoneClass::Glide:
            return 2;
        case PhoneClass::Nasal:
            return 3;
        case PhoneClass::Fricative:
        case PhoneClass::Stop:
        case PhoneClass::Affricate:
            return 4;
    }
    return 0;
}

// The formants at which the nearest phone with a place of its own begins or ends, seen from phone `i` in
// direction `step`: an h takes those of its neighbour. Nothing where there is silence.
std::optional<Formants> TargetBeyond(const SpokenPhones& phones, std::size_t i, bool isForward) {
    while (i < phones.size() && phones.Entry(i).kind == PhoneClass::Aspirate)
        i += isForward ? 1U : ~std::size_t{0};
    if (i >= phones.size() || IsPause(phones.Entry(i))) return std::nullopt;
    return isForward ? phones.Entry(i).start : phones.Entry(i).end;
}

// Locus equation: the boundary's value is a straight function of the vowel's target (Lindblom 1963; Sussman,
// McCaffrey and Matthews 1991).
Formants LocusEquation(const PhoneEntry& owner, const Formants& target) {
    const PhoneEntry& variant = VariantBeside(owner, target[1]);
    Formants value{};
    for (std::size_t k = 0; k < kRuledFormants; ++k) {
        value[k] = variant.start[k] + variant.slope[k] * (target[k] - variant.start[k]);
    }
    return value;
}

Formants Middle(const Formants& a, const Formants& b) {
    Formants value{};
    for (std::size_t k = 0; k < kRuledFormants; ++k) value[k] = 0.5 * (a[k] + b[k]);
    return value;
}

}  // namespace

bool OwnsBoundary(const PhoneEntry& a, const PhoneEntry& b) { return Rank(a) > Rank(b); }

Formants BoundaryAfter(const SpokenPhones& phones, std::size_t i) {
    const PhoneEntry& a = phones.Entry(i);
    const PhoneEntry& b = phones.Entry(i + 1);
    std::optional<Formants> left = TargetBeyond(phones, i, false);
    std::optional<Formants> right = TargetBeyond(phones, i + 1, true);
    if (!left && !right) return Middle(a.end, b.start);
    if (!left) left = Rank(a) == 0 ? *right : a.end;
    if (!right) right = Rank(b) == 0 ? *left : b.start;
    if (OwnsBoundary(a, b)) return LocusEquation(a, *right);
    if (OwnsBoundary(b, a)) return LocusEquation(b, *left);
    if (IsVowel(a) || Rank(a) == 0) return Middle(*left, *right);
    return Middle(LocusEquation(a, *right), LocusEquation(b, *left));
}

}  // namespace larynth
