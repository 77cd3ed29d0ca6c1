// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Interface.h>

namespace larynth {

/// Base of a fake with one interface that lives where the test puts it and only counts its references.
template <class Interface>
class StackObject : public Interface {
  public:
    virtual ~StackObject() = default;

    /// What queries for the interface return.
    HRESULT queryCode = S_OK;
    int references = 0;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        const bool known = riid == IID_IUnknown || riid == InterfaceId<Interface>::value;
        const HRESULT code = known ? queryCode : E_NOINTERFACE;
        *ppv = SUCCEEDED(code) ? static_cast<Interface*>(this) : nullptr;
        if (SUCCEEDED(code)) AddRef();
        return code;
    }
    ULONG LARYNTH_CALL AddRef() noexcept override { return static_cast<ULONG>(++references); }
    ULONG LARYNTH_CALL Release() noexcept override { return static_cast<ULONG>(--references); }
};

}  // namespace larynth
