// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace larynth {

/// The open phase of one excitation period, equally spaced.
using Waveform = std::vector<double>;

/// Reads a waveform as text: one number a line, with the grammar of a frame table; blanks around it, blank
/// lines, carriage returns at a line's end and a byte order mark are ignored. `fileName` serves messages.
/// Raises BadInput for the first thing that is wrong, with its place.
Waveform ParseWaveform(std::istream& input, const std::string& fileName);

/// An output filter that raises one end of the spectrum.
struct Shelf {
    double F = 0.0;   ///< Corner frequency, Hz.
    double G = 1.0;   ///< Linear gain; 1 is off.
    double P3 = 0.0;  ///< Shape.
    double P4 = 0.0;  ///< Shape.
};

/// What a voice changes about the sound.
struct VoiceSettings {
    double preEmphasis = 0.0;   ///< Coefficient a of y[n] − a·y[n−1].
    double openQuotient = 0.5;  ///< For the wave-table source.
    Shelf lowShelf, highShelf;
    Waveform wave;  ///< Empty: the voice has no source of its own.
};

/// Reads a voice from a JSON file's text; every key may be absent. `fileName` serves messages. Raises
/// BadInput with line and column for the first thing that is wrong.
VoiceSettings ParseVoice(const std::string& text, const std::string& fileName);

}  // namespace larynth
