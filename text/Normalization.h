// SPDX-License-Identifier: MIT
/// From what stands between blanks to words that English has a pronunciation for.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "text/FliteFrontEnd.h"
#include "text/Sentences.h"
#include "text/UtteranceReader.h"

namespace larynth {

/// What stands between two blanks of a sentence.
struct Token {
    std::string written;                 ///< UTF-8.
    std::shared_ptr<const Style> style;  ///< Never null.
};

/// The words of a sentence; `source` of each is the index of its token. Every token is heard: what has no
/// word is said by its name. What consists of nothing but punctuation is named, whatever the options say.
std::vector<SpokenWord> Normalized(const std::vector<Token>& tokens, const TextOptions& options);

}  // namespace larynth
