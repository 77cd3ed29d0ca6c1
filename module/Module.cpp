// SPDX-License-Identifier: MIT
#include "module/Module.h"

#include <algorithm>
#include <mutex>
#include <new>

#include "com/ModuleLock.h"
#include "com/OutPointer.h"
#include "module/ClassFactory.h"
#include "module/ClassTable.h"

namespace larynth {

namespace {

constinit std::mutex objectTableLock;  // guards the creation of the cached factories

/// The cached factory, created on first use; null when there is no memory for it.
IClassFactory* FactoryOf(ClassEntry& entry) noexcept {
    if (IClassFactory* cached = entry.Factory.load()) return cached;
    const std::scoped_lock lock(objectTableLock);
    // Another thread may have been first: all must get the same factory.
    if (entry.Factory.load() == nullptr) entry.Factory.store(new (std::nothrow) ClassFactory(entry.Create));
    return entry.Factory.load();
}

}  // namespace

HRESULT Module::GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) noexcept {
    if (!CanWrite(ppv)) return E_POINTER;
    *ppv = nullptr;
    const auto table = ClassTable();
    const auto entry = std::ranges::find(table, rclsid, &ClassEntry::Id);
    if (entry == table.end()) return CLASS_E_CLASSNOTAVAILABLE;
    IClassFactory* factory = FactoryOf(*entry);
    return factory != nullptr ? factory->QueryInterface(riid, ppv) : E_OUTOFMEMORY;
}

bool Module::CanUnload() noexcept { return ModuleLock::Count() == 0; }

void Module::ReleaseFactories() noexcept {
    for (ClassEntry& entry : ClassTable()) {
        if (IClassFactory* factory = entry.Factory.exchange(nullptr)) factory->Release();
    }
}

}  // namespace larynth
