// SPDX-License-Identifier: MIT
#pragma once

namespace CLI {
class App;
}

namespace larynth {

/// Adds `larynth completion bash|zsh`, which writes to standard output a script by which that shell completes
/// command lines. It is made of the commands and options that the program has when it runs.
///
/// What completes a value follows from the name of its type: FILE, or words between bars; a word that
/// goes on with a file has it behind a colon, as in wave:FILE.
void AddCompletionCommand(CLI::App& program);

}  // namespace larynth
