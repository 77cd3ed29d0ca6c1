// SPDX-License-Identifier: MIT
/// The loader's notices to a component module. Each module links ModuleNotification.cpp and defines the two
/// functions. They run under the loader's lock, next to the module's static constructors in no particular
/// order: what they touch has to be constant-initialised.
#pragma once

namespace larynth {

/// The module was loaded; nothing else of it has been called.
void ModuleLoaded() noexcept;

/// The module is about to leave memory, or the process ends.
void ModuleUnloading() noexcept;

}  // namespace larynth
