// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace larynth {

using Rows = std::vector<std::vector<std::string>>;  ///< Equally many fields in each.

/// Columns aligned and two blanks apart.
std::string AlignedText(const Rows& rows);

/// Adds `larynth items`, which writes the items of a packet to standard output: index, ID, name, unit, the
/// value of a new packet, meaning.
void AddItemsCommand(CLI::App& program);

/// Adds `larynth classes`, which writes to standard output which classes the loaded modules offer, which are
/// the two that this program came with, and which the user's registration store names. A class that both
/// have comes from the loaded module.
///
/// What a module offers is what it would write into the store: it registers itself in a registry in memory.
/// Not on Windows, whose registry holds the classes of all programs.
void AddClassesCommand(CLI::App& program);

}  // namespace larynth
