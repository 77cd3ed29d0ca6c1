// SPDX-License-Identifier: MIT
/// How the companion's classes keep objects that clients give them, and hand them out again.
#pragma once

#include <utility>

#include <larynth/ComPtr.h>
#include <larynth/Streams.h>

#include "com/Boundary.h"
#include "com/OutPointer.h"
#include "companion/ReleaseInTurn.h"

namespace larynth {

/// Writes `object`'s `riid` interface with a reference for the caller; null and S_OK when there is no object,
/// null and the query's code when it fails. E_POINTER.
///
/// The reference is this call's own: a partner may change its holder, or give it back, from within the query.
inline HRESULT HandOut(ComPtr<IUnknown> object, REFIID riid, IUnknown** ppAnswer) noexcept {
    if (!CanWrite(ppAnswer)) return E_POINTER;
    *ppAnswer = nullptr;
    if (!object) return S_OK;
    const HRESULT hr =
        Guarded([&] { return object->QueryInterface(riid, reinterpret_cast<void**>(ppAnswer)); });
    if (FAILED(hr)) *ppAnswer = nullptr;
    return hr;
}

/// One attached object, or none: the face that sample blocks and stream holders share.
class AttachedObject : public ITTSSyncHolder {
  public:
    using Interface = ITTSSyncHolder;

    HRESULT LARYNTH_CALL SetObject(IUnknown* pObject) noexcept override {
        if (pObject == nullptr && !object_) return S_OK;
        const auto self = ComPtr<ITTSSyncHolder>::Share(this);  // what is held may give this back
        object_ = ComPtr<IUnknown>::Share(pObject);
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetObject(REFIID riid, IUnknown** ppObject) noexcept override {
        return HandOut(object_, riid, ppObject);
    }

  protected:
    AttachedObject() = default;
    ~AttachedObject() { ReleaseInTurn(std::move(object_)); }

  private:
    ComPtr<IUnknown> object_;
};

}  // namespace larynth
