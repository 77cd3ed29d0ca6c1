// SPDX-License-Identifier: MIT
/// From words to phones: the pronunciation, rhythm and intonation of one sentence of English.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "speech/Utterance.h"

namespace larynth {

/// Something to be said that stands between blanks.
struct SpokenWord {
    std::string text;        ///< Letters, digits and apostrophes of ASCII.
    std::string phones;      ///< Where not empty: how it is said, as phones with stress: "hh ax l ow1".
    char punctuation = 0;    ///< Behind it: one of , ; : . ? ! or nothing.
    std::size_t source = 0;  ///< The writer's own number for what it was made of.
};

/// Phones and the words that they belong to.
struct PhonesOfWords {
    static constexpr std::size_t kNoWord = static_cast<std::size_t>(-1);

    std::vector<Phone> phones;
    std::vector<std::size_t> words;  ///< For each phone the index of its word; `kNoWord` for a pause.
    std::vector<PitchTarget> pitch;
};

/// Says the words as one sentence, which ends with a pause and begins without one. Threads wait for each
/// other.
PhonesOfWords SayWords(const std::vector<SpokenWord>& words);

}  // namespace larynth
