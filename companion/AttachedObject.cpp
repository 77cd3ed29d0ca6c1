// SPDX-License-Identifier: MIT
#include "companion/AttachedObject.h"

#include "companion/References.h"

namespace larynth {

HRESULT AttachedObject::SetObject(IUnknown* pObject) noexcept {
    object_ = Hold(pObject);
    return S_OK;
}

HRESULT AttachedObject::GetObject(REFIID riid, IUnknown** ppObject) noexcept {
    return HandOut(object_, riid, ppObject);
}

}  // namespace larynth
