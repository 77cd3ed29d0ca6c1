// SPDX-License-Identifier: MIT
// Nothing is built when the module is loaded and nothing is left when it is unloaded: lock count and class
// table are constants until first used.
#include "module/EntryPoints.h"

#include <algorithm>

#include "com/ModuleLock.h"
#include "com/OutPointer.h"
#include "module/ClassTable.h"

HRESULT LARYNTH_CALL DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    const auto table = larynth::ClassTable();
    const auto entry = std::ranges::find(table, rclsid, &larynth::ClassEntry::Id);
    if (entry != table.end()) return entry->Factory.QueryInterface(riid, ppv);
    return FAILED(larynth::Put(ppv, nullptr)) ? E_POINTER : CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT LARYNTH_CALL DllCanUnloadNow() { return larynth::ModuleLock::Count() == 0 ? S_OK : S_FALSE; }
