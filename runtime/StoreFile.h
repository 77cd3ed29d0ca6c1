// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace larynth {

/// Absolute path of the user's registration store, whether it exists or not: $LARYNTH_REGISTRY where set,
/// else larynth/registry.db below $XDG_DATA_HOME, else below ~/.local/share. Empty when none of the three
/// variables is set.
std::string StoreFile();

}  // namespace larynth
