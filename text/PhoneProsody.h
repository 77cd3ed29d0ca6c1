// SPDX-License-Identifier: MIT
/// Rhythm and intonation by rule for phones that come without.
#pragma once

#include <string>
#include <vector>

#include "speech/Utterance.h"
#include "text/PhoneNames.h"

namespace larynth {

/// A phone or a pause as it is written.
struct WrittenPhone {
    PhoneSymbol symbol;
    bool startsWord = false;
    bool startsSyllable = false;  ///< As far as it is written.
    char punctuation = 0;         ///< Of a pause: what stands for it.
};

/// Up to the end of an utterance.
struct PhonePhrase {
    std::vector<WrittenPhone> phones;
    std::vector<std::pair<std::size_t, std::string>> words;  ///< In front of which phone, as written.
};

/// Finds syllables, durations after Klatt (1979), and a contour that falls from accent to accent and at the
/// end, or rises there in front of a question mark.
Utterance WithProsody(const PhonePhrase& phrase);

}  // namespace larynth
