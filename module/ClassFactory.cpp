// SPDX-License-Identifier: MIT
#include "module/ClassFactory.h"

#include "com/ModuleLock.h"
#include "com/OutPointer.h"

namespace larynth {

HRESULT ClassFactory::QueryInterface(REFIID riid, void** ppv) noexcept {
    if (ppv == nullptr) return E_POINTER;
    const bool answered = riid == IID_IUnknown || riid == IID_IClassFactory;
    *ppv = answered ? static_cast<IClassFactory*>(this) : nullptr;
    if (!answered) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG ClassFactory::AddRef() noexcept {
    const std::scoped_lock lock(countLock_);
    if (++count_ == 2) ModuleLock::Add();
    return count_;
}

ULONG ClassFactory::Release() noexcept {
    const ULONG left = RemoveReference();
    if (left == 0) delete this;  // after the lock, which is part of the factory, was given back
    return left;
}

ULONG ClassFactory::RemoveReference() noexcept {
    const std::scoped_lock lock(countLock_);
    if (--count_ == 1) ModuleLock::Remove();
    return count_;
}

HRESULT ClassFactory::CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) noexcept {
    if (!CanWrite(ppvObject)) return E_POINTER;
    *ppvObject = nullptr;
    if (pUnkOuter != nullptr && !(riid == IID_IUnknown)) return CLASS_E_NOAGGREGATION;
    return create_(pUnkOuter, riid, ppvObject);
}

HRESULT ClassFactory::LockServer(BOOL fLock) noexcept {
    if (fLock != FALSE) {
        ModuleLock::Add();
    } else {
        ModuleLock::Remove();
    }
    return S_OK;
}

}  // namespace larynth
