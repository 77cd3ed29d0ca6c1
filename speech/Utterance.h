// SPDX-License-Identifier: MIT
/// What is to be said, as phones: between the analysis of a text and the rules that make frames of it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace larynth {

/// How a stretch of an utterance is said, as factors on what the speaker does anyway.
struct Prosody {
    double rate = 1.0;    ///< Speaking rate.
    double pitch = 1.0;   ///< F0.
    double range = 1.0;   ///< Distance of F0 from its mean, in octaves.
    double volume = 1.0;  ///< Amplitude.
};

/// One phone in its place.
struct Phone {
    std::string name;       ///< As in the phone table.
    double duration = 0.0;  ///< At the front end's usual rate, s.
    int stress = 0;         ///< Of its syllable: 0 none, 1 primary, 2 secondary.
    bool startsSyllable = false;
    bool startsWord = false;
    Prosody prosody;
};

/// A point of the F0 contour; between two of them it runs straight.
struct PitchTarget {
    std::size_t phone = 0;  ///< Index of the phone in which it lies.
    double place = 0.0;     ///< Within the phone: 0 its beginning, 1 its end.
    double level = 0.0;     ///< Above the speaker's mean, in standard deviations of the speaker's F0.
};

/// Something to be told when the sound reaches a phone.
struct Mark {
    enum class Kind { Word, Named };

    std::size_t phone = 0;  ///< In front of the phone with this index; the number of phones: at the end.
    Kind kind = Kind::Named;
    std::string name;  ///< The word as written, or the mark's name. UTF-8.
};

/// A stretch of speech with an intonation of its own: a sentence, mostly.
struct Utterance {
    std::vector<Phone> phones;
    std::vector<PitchTarget> pitch;  ///< In the order of time.
    std::vector<Mark> marks;         ///< In the order of time.
};

}  // namespace larynth
