// SPDX-License-Identifier: MIT
#pragma once

namespace CLI {
class App;
}

namespace larynth {

/// Adds `larynth plot`, which has the Python package draw: the process becomes the interpreter. Raises
/// std::system_error where there is none.
void AddPlotCommand(CLI::App& program);

}  // namespace larynth
