// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "speech/Utterance.h"

namespace larynth {

/// An utterance, and the tempo at which its phones are to be spoken.
struct PausedUtterance {
    Utterance utterance;
    double tempo;
};

/// Slow speech is speech with more pauses: the articulation slows little (Goldman-Eisler 1968; Grosjean and
/// Collins 1979). At a tempo, relative to the front end's own, below that of careful speech the phones keep
/// the latter, and pauses between words, evenly spread and none too short to be one, make the utterance as
/// long as asked. A word without stress, such as an article, leans on the one that follows. `pause` is the
/// name of the phone.
PausedUtterance WithPauses(Utterance utterance, double tempo, const std::string& pause);

}  // namespace larynth
