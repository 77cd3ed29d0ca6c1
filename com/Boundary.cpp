// SPDX-License-Identifier: MIT
#include "com/Boundary.h"

#include <larynth/ComException.h>

namespace larynth {

HRESULT StatusOfCurrentException() noexcept {
    try {
        throw;
    } catch (const Zelvani::ComException& failure) {
        return failure.Code();
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace larynth
