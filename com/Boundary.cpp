// SPDX-License-Identifier: MIT
#include "com/Boundary.h"

#include <new>

#include <larynth/ComException.h>

namespace larynth {

HRESULT StatusOfCurrentException(HRESULT outOfMemory) noexcept {
    try {
        throw;
    } catch (const Zelvani::ComException& failure) {
        return failure.Code();
    } catch (const std::bad_alloc&) {
        return outOfMemory;
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace larynth
