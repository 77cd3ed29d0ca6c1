// SPDX-License-Identifier: MIT
/// What the larynx, the velum and the constrictions do while a phone is spoken.
#pragma once

#include <vector>

#include "speech/SpokenPhone.h"

namespace larynth {

/// What rises and falls.
enum class Track { Voicing, Aspiration, Frication, Nasality };
inline constexpr std::size_t kTracks = 4;

/// A level that is there between two times; it rises and falls along straight lines centred on them. Those of
/// one track add up, so that two that meet pass into each other.
struct Gesture {
    Track track;
    double from, to;    ///< s
    double level;       ///< Amplitude relative to a stressed vowel's or to an s; of nasality, 1.
    double rise, fall;  ///< s

    double At(double time) const noexcept;
};

/// The spectrum of the noise in a time.
struct NoiseColour {
    double from, to;  ///< s
    NoiseBands bands;
};

/// What a phone adds to the tilt of the source's spectrum in a time, dB at 3 kHz.
struct AddedTilt {
    double from, to;  ///< s
    double tilt;
};

/// The glottis is open so wide that the first formant loses energy through it.
struct OpenGlottis {
    double from, to;  ///< s
};

/// All that one phone does. A phone's gestures end in a neighbour at the latest.
struct Gestures {
    std::vector<Gesture> levels;
    std::vector<NoiseColour> colours;
    std::vector<AddedTilt> tilts;
    std::vector<OpenGlottis> openings;

    void Add(Track track, double from, double to, double decibels, double rise, double fall);
};

/// Linear amplitude of a level in dB.
double Amplitude(double decibels);

/// The spectrum of noise made at the glottis, as the parallel branch adds it to what the cascade passes.
const NoiseBands& AspirationColour();

/// By the class of phone `i`.
Gestures GesturesOf(const SpokenPhones& phones, std::size_t i);

// One class each.

/// Voicing, with some breath in it; it dies away slowly in front of silence.
void SpeakVocalic(const SpokenPhones& phones, std::size_t i, Gestures& gestures);
/// The velum opens before the mouth closes and closes after it opens.
void SpeakNasal(const SpokenPhones& phones, std::size_t i, Gestures& gestures);
/// Noise; the voicing of a voiced one ends early in front of silence or a voiceless phone.
void SpeakFricative(const SpokenPhones& phones, std::size_t i, Gestures& gestures);
/// h: noise at the glottis in the neighbours' tract.
void SpeakAspirate(const SpokenPhones& phones, std::size_t i, Gestures& gestures);
/// Closure, burst, aspiration, voicing. In front of another closure there is no burst.
void SpeakStop(const SpokenPhones& phones, std::size_t i, Gestures& gestures);
/// Closure, and a fricative from the release on.
void SpeakAffricate(const SpokenPhones& phones, std::size_t i, Gestures& gestures);

}  // namespace larynth
