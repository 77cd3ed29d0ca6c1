// SPDX-License-Identifier: MIT
// Where the modules are linked into the program there is nothing to load.
#include <larynth/Speech.h>

namespace larynth {

std::vector<std::string> ModulePaths() { return {}; }

void LoadModules() {}

}  // namespace larynth
