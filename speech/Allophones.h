// SPDX-License-Identifier: MIT
#pragma once

#include "speech/SpokenPhone.h"

namespace larynth {

/// The table's rows for an utterance's phones, with what their neighbourhood makes of them: t and d between
/// vowels in front of an unstressed one are flaps (Kahn 1976). Durations are still the front end's, written
/// into `end`. Raises BadInput for a phone that the table does not have.
std::vector<SpokenPhone> Allophones(const Utterance& utterance, const PhoneTable& table);

/// The row by which a phone meets a neighbour whose second formant aims at `f2` (Hz): velars follow the
/// vowel, they are made further forward beside front ones.
const PhoneEntry& VariantBeside(const PhoneEntry& entry, double f2);

}  // namespace larynth
