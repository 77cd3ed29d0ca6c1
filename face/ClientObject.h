// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Interface.h>

namespace larynth {

/// An object of the host's own that travels through a stream: one interface, counted references, used by one
/// thread at a time.
template <class Interface>
class ClientObject : public Interface {
  public:
    ClientObject(const ClientObject&) = delete;
    ClientObject& operator=(const ClientObject&) = delete;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        if (ppv == nullptr) return E_POINTER;
        const bool known = riid == IID_IUnknown || riid == InterfaceId<Interface>::value;
        *ppv = known ? static_cast<Interface*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG LARYNTH_CALL AddRef() noexcept override { return ++count_; }
    ULONG LARYNTH_CALL Release() noexcept override {
        const ULONG count = --count_;
        if (count == 0) delete this;
        return count;
    }

  protected:
    ClientObject() = default;
    virtual ~ClientObject() = default;

  private:
    ULONG count_ = 1;  // the creator's reference
};

}  // namespace larynth
