// SPDX-License-Identifier: MIT
#include "tests/runtime/SampleModule.h"

extern "C" SampleControl* ControlSample();

/// Needs the module: a loader that brings this in brings the module in too.
extern "C" [[gnu::visibility("default")]] SampleControl* ControlSampleOfModule() { return ControlSample(); }
