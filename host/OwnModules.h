// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace larynth {

/// The component modules that this program came with: the synthesizer's and its companion. They lie in a
/// folder beside the runtime's library, so that an installed tree can be moved as a whole.
std::vector<std::string> OwnModules();

/// Loads them, so that their classes are found without any registration. Raises std::runtime_error.
void LoadOwnModules();

}  // namespace larynth
