// SPDX-License-Identifier: MIT
#pragma once

namespace CLI {
class App;
}

namespace larynth {

/// Adds `larynth items`, which writes the items of a packet to standard output: index, ID, name, unit, the
/// value of a new packet, meaning.
void AddItemsCommand(CLI::App& program);

/// Adds `larynth classes`, which writes to standard output which classes the loaded modules offer, which are
/// the two that this program came with, and which the user's registration store names. A class that both
/// have comes from the loaded module.
///
/// What a module offers is what it would write into the store: it registers itself in a registry in memory.
void AddClassesCommand(CLI::App& program);

}  // namespace larynth
