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
/// Raises TableError for the first thing that is wrong, BadInput when the input cannot be read.
Waveform ParseWaveform(std::istream& input, const std::string& fileName);

}  // namespace larynth
