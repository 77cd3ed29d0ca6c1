// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Base.h>

namespace larynth {

/// Writes the classes of the class table into the user's registration store, each by its registry script, in
/// the order of the table. The code of the first failure, after which no further class is written; the
/// classes before it stay.
HRESULT RegisterClasses() noexcept;

/// Registers the type library that this module carries, or else the ".tlb" file beside it.
HRESULT RegisterOwnTypeLibrary() noexcept;

/// Takes the classes out again, passing over failures.
void UnregisterClasses() noexcept;

}  // namespace larynth
