// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <istream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/command/RenderInput.h"

namespace larynth {

using Position = std::pair<std::size_t, std::string>;  // sample, text

struct GoldenCase {
    std::string name, input, kind, expected;
    std::vector<std::string> options;  // of `larynth render`: names and values
    std::size_t samples;
    std::vector<Position> markers;
};

/// The bytes of a file beside the index.
std::string GoldenFile(const std::string& name);

std::vector<GoldenCase> GoldenCases();

std::unique_ptr<RenderInput> InputOf(const GoldenCase& row, std::istream& input);

/// What the case's options say; the sample frequency is the input's.
SynthesizerSettings SettingsOf(const GoldenCase& row);

}  // namespace larynth
