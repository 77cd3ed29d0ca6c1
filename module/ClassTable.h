// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <span>

#include <larynth/Interface.h>

namespace larynth {

/// Creates an object of one class, standing alone or as a part of `pUnkOuter`, and writes its `riid`
/// interface; CreateInstance<Class> has this form.
using CreateOperation = HRESULT (*)(IUnknown* pUnkOuter, REFIID riid, void** ppv) noexcept;

/// A row of the class table.
struct ClassEntry {
    CLSID Id;
    LONG Script;  ///< Number of the registry script among the module's resources.
    CreateOperation Create;
    /// Cached: set under the object-table lock and held until unload.
    std::atomic<IClassFactory*> Factory{nullptr};
};

/// The creatable classes of this module; every module defines its own. The order of the rows is the order of
/// look-up and of registration.
std::span<ClassEntry> ClassTable() noexcept;

/// Whether registering the module registers a type library too; every module defines its own.
bool HasTypeLibrary() noexcept;

}  // namespace larynth
