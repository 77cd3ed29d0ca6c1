// SPDX-License-Identifier: MIT
#pragma once

#include "speech/Utterance.h"
#include "text/Sentences.h"
#include "text/UtteranceReader.h"

namespace larynth {

/// The utterance of a sentence: its words said, with the breaks, marks and ways of speaking that markup asks
/// for.
Utterance SpeakSentence(const MarkedText& sentence, const TextOptions& options);

}  // namespace larynth
