// SPDX-License-Identifier: MIT
#include "com/ModuleLock.h"
#include "com/OutPointer.h"
#include "module/ClassTable.h"

namespace larynth {

namespace {
constexpr ULONG kTablesOwn = 1;  // what the class table holds
}

HRESULT ClassFactory::QueryInterface(REFIID riid, void** ppv) noexcept {
    if (!CanWrite(ppv)) return E_POINTER;
    const bool answered = riid == IID_IUnknown || riid == IID_IClassFactory;
    *ppv = answered ? static_cast<IClassFactory*>(this) : nullptr;
    if (!answered) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG ClassFactory::AddRef() noexcept {
    ModuleLock::Add();
    return kTablesOwn + 1;
}

ULONG ClassFactory::Release() noexcept {
    ModuleLock::Remove();
    return kTablesOwn;
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
