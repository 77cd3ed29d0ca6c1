// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

#include <larynth/Interface.h>

#include "com/OutPointer.h"

namespace larynth {

/// Base of the objects that the runtime hands out, each with one interface and born with one reference, its
/// creator's. It stands beside the components' kit because several threads may hold such an object, so it is
/// counted atomically; and it is part of no other object and holds no module.
template <class Interface>
class SharedObject : public Interface {
  public:
    SharedObject() noexcept = default;
    SharedObject(const SharedObject&) = delete;
    SharedObject& operator=(const SharedObject&) = delete;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept final {
        if (!CanWrite(ppv)) return E_POINTER;
        const bool answered = riid == IID_IUnknown || riid == InterfaceId<Interface>::value;
        *ppv = answered ? static_cast<Interface*>(this) : nullptr;
        if (!answered) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG LARYNTH_CALL AddRef() noexcept final { return ++count_; }
    ULONG LARYNTH_CALL Release() noexcept final {
        const ULONG left = --count_;
        if (left == 0) delete this;
        return left;
    }

  protected:
    virtual ~SharedObject() = default;

  private:
    std::atomic<ULONG> count_{1};
};

}  // namespace larynth
