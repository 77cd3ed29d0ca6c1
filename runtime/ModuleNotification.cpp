// SPDX-License-Identifier: MIT
#include "runtime/ModuleNotification.h"

namespace {

[[gnu::constructor]] void NotifyLoaded() { larynth::ModuleLoaded(); }

[[gnu::destructor]] void NotifyUnloading() { larynth::ModuleUnloading(); }

}  // namespace
