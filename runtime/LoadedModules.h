// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include <larynth/Base.h>

#include "runtime/LoadedModule.h"

namespace larynth {

/// The component modules in the process, however they came in: loaded here, by the host, or with the program.
/// Each one that was found stays in memory until it says that it can go.
///
/// No lock is held while a module or the loader is called: either may come back here, and the loader runs
/// foreign code under a lock of its own.
class LoadedModules {
  public:
    /// The class object from the first module, in load order, that knows the class;
    /// CLASS_E_CLASSNOTAVAILABLE when none does. Raises std::bad_alloc, but only after a change of what is
    /// loaded.
    HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);

    /// Loads a module; CO_E_DLLNOTFOUND, CO_E_ERRORINDLL. Raises std::bad_alloc.
    HRESULT Load(const char* path);

    /// Lets go of the modules that can be unloaded, unless a look-up is going on in another thread: what it
    /// has just been given may come from any of them. Raises std::bad_alloc.
    void FreeUnused();

  private:
    using List = std::vector<LoadedModule>;
    class LookUp;

    bool IsUpToDate();
    void Update();

    std::mutex mutex_;                  // guards all that follows
    std::shared_ptr<const List> list_;  // replaced, never changed
    std::uint64_t imageChanges_ = 0;    // the state of the process that list_ describes
    bool forgetful_ = true;             // list_ lacks modules that may be in memory
    std::uint64_t lookUps_ = 0;         // ever started
    std::uint64_t lookUpsGoingOn_ = 0;
};

/// The modules of this process.
LoadedModules& ModulesOfProcess() noexcept;

}  // namespace larynth
