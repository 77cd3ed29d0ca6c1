// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include <larynth/Base.h>

#include "runtime/classes/ResourceTable.h"

namespace larynth {

/// The absolute path of a module's file that a host names, by which the module then knows itself. A relative
/// one is taken from the working folder, and never looked for along the loader's path. It is refused in a
/// process that runs with more rights than its caller, who chose that folder. Raises Failure with `code`.
std::string ModuleFile(const std::string& path, HRESULT code);

/// A shared object in this process and its component entry points, if it has any. Stays in memory at least as
/// long as a copy of this lives.
class LoadedModule {
  public:
    using RegisteringEntry = HRESULT(LARYNTH_CALL*)();

    /// The image that the loader knows as `path`; not loaded by it, so possibly gone meanwhile.
    static LoadedModule Find(const char* path);
    /// Loads the file by its absolute path; what it names stays invisible to others. When that fails,
    /// dlerror() says why.
    static LoadedModule Load(const char* path);

    bool InMemory() const { return handle_ != nullptr; }
    bool OffersClasses() const { return getClassObject_ != nullptr; }
    bool TellsWhenUnused() const { return canUnloadNow_ != nullptr; }

    /// Asks the module for a class object; CLASS_E_CLASSNOTAVAILABLE for a class that it does not have.
    HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) const {
        return getClassObject_(rclsid, riid, ppv);
    }
    /// Asks the module whether nothing of it is in use.
    bool CanUnload() const { return TellsWhenUnused() && canUnloadNow_() == S_OK; }
    /// The entry point "DllRegisterServer" or "DllUnregisterServer", or null.
    RegisteringEntry RegistrationEntry(const char* name) const;
    /// A file that the module carries, valid while it is in memory.
    std::optional<std::span<const std::byte>> FindResource(const char* type, LONG number) const;

  private:
    using GetClassObjectEntry = HRESULT(LARYNTH_CALL*)(REFCLSID, REFIID, void**);
    using CanUnloadNowEntry = HRESULT(LARYNTH_CALL*)();

    explicit LoadedModule(void* handle);

    std::shared_ptr<void> handle_;  // closed with the last copy
    GetClassObjectEntry getClassObject_ = nullptr;
    CanUnloadNowEntry canUnloadNow_ = nullptr;
    const Resource* resources_ = nullptr;
};

}  // namespace larynth
