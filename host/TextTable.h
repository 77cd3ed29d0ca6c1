// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace larynth {

/// Rows of equally many fields as lines of text, columns aligned and two blanks apart.
std::string AlignedText(const std::vector<std::vector<std::string>>& rows);

}  // namespace larynth
