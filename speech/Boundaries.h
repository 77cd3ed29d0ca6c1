// SPDX-License-Identifier: MIT
#pragma once

#include "speech/SpokenPhone.h"

namespace larynth {

/// Whether the value of the formants at the boundary is the business of `a` rather than of `b`: obstruents
/// decide before nasals, nasals before glides, glides before vowels.
bool OwnsBoundary(const PhoneEntry& a, const PhoneEntry& b);

/// The formants (Hz) at the boundary behind phone `i`, which must not be the last: where the owner's locus
/// equation puts them for the target of the other one. Two of equal rank meet in the middle.
Formants BoundaryAfter(const SpokenPhones& phones, std::size_t i);

}  // namespace larynth
