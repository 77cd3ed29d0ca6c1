// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Base.h>

namespace larynth {

/// The status code of the exception being handled: a ComException's own, `outOfMemory` for std::bad_alloc,
/// E_FAIL for any other.
HRESULT StatusOfCurrentException(HRESULT outOfMemory) noexcept;

/// Runs the body of an interface method: the only place where an exception becomes a status code. Nothing
/// that the body did before is rolled back. Only creation tells when memory runs out.
template <class Body>
HRESULT Guarded(Body&& body, HRESULT outOfMemory = E_FAIL) noexcept {
    try {
        return body();
    } catch (...) {
        return StatusOfCurrentException(outOfMemory);
    }
}

}  // namespace larynth
