// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Base.h>

namespace larynth {

/// Raises std::runtime_error with the status code for a component call that failed; `what` completes the
/// sentence "cannot …".
void Require(HRESULT hr, const char* what);

/// Raises std::runtime_error with the runtime's own text, which names files and causes.
[[noreturn]] void RaiseLastError();

}  // namespace larynth
