// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Interface.h>

namespace larynth {

/// This module's class objects: one factory per row of the class table, created when first asked for and kept
/// until unload. Any thread may ask; all get the same factory.
class Module {
  public:
    /// Writes the `riid` interface of the class's factory. E_POINTER, CLASS_E_CLASSNOTAVAILABLE for a class
    /// that the table does not have, E_OUTOFMEMORY, E_NOINTERFACE.
    static HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) noexcept;

    /// True when no object, extra factory reference or server lock holds the module.
    static bool CanUnload() noexcept;

    /// Gives the class table's references back. Objects that are still alive are not touched.
    static void ReleaseFactories() noexcept;
};

}  // namespace larynth
