// SPDX-License-Identifier: MIT
#pragma once

namespace CLI {
class App;
}

namespace larynth {

/// Adds `larynth register` and `larynth unregister`: the classes of modules in the user's registration store.
/// One line for each module says what was done: all of it, or nothing where the module fails.
///
/// They stop at the first module that fails, and raise BadInput for a file that is no module, before anything
/// was done where it does not exist; std::runtime_error for what goes wrong while working.
void AddRegistrationCommands(CLI::App& program);

}  // namespace larynth
