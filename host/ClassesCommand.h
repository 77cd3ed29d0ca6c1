// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// `larynth classes`: writes to standard output which classes the loaded modules offer, which are the two
/// that this program came with, and which the user's registration store names. A class that both have comes
/// from the loaded module.
///
/// What a module offers is what it would write into the store: it registers itself in a registry in memory.
void RunClassesCommand();

}  // namespace larynth
