// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>

namespace larynth {

/// Gives back a reference of an object that is being destroyed. What the release destroys in turn, and what
/// that gives back by this function, waits until it has returned: the stack does not grow with the depth to
/// which lists and holders are nested. Null does nothing.
void ReleaseInTurn(ComPtr<IUnknown> object) noexcept;

}  // namespace larynth
