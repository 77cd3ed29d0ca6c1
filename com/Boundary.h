// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Base.h>

namespace larynth {

/// The status code of the exception being handled: a ComException's own, E_FAIL for any other.
HRESULT StatusOfCurrentException() noexcept;

/// Runs the body of an interface method: the only place where an exception becomes a status code. Nothing
/// that the body did before is rolled back.
template <class Body>
HRESULT Guarded(Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return StatusOfCurrentException();
    }
}

}  // namespace larynth
