// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "speech/PhoneTable.h"

namespace larynth {

/// Who speaks: what a voice adds to the phones of a language. The defaults are the man's.
struct Speaker {
    double f0 = 105.0;              ///< Mean F0, Hz.
    double spread = 0.18;           ///< Standard deviation of F0, octaves.
    Formants scale{1.0, 1.0, 1.0};  ///< Of the table's formants F1 to F3: shorter tracts have higher ones.
    std::array<double, 2> upper{3480.0, 4450.0};         ///< F4 and F5, Hz.
    std::array<double, 2> upperBandwidth{130.0, 200.0};  ///< Hz
    double openQuotient = 0.5;                           ///< Open phase as a share of the period.
    double tilt = 0.0;                                   ///< Of the source's spectrum, dB at 3 kHz.
    double breathiness = -26.0;                          ///< Aspiration beside voicing, dB.
    double flutter = 0.0;                                ///< Slow variation of F0, as a share of it.
    bool whispers = false;                               ///< Noise stands in for voicing.

    /// Reads a speaker: lines with a name and a value, # begins a comment line; what is not named is as in
    /// the defaults. docs/speech.md lists the names. `fileName` serves messages. Raises BadInput with file,
    /// line and column.
    static Speaker Parse(std::istream& input, std::string fileName);

    /// One that comes with the system; nothing for an unknown name.
    static std::optional<Speaker> Find(std::string_view name);
    /// The names that Find knows, the usual one first.
    static std::vector<std::string> Names();
};

}  // namespace larynth
