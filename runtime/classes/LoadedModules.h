// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include <larynth/Base.h>

#include "com/UseCount.h"
#include "runtime/classes/LoadedModule.h"

namespace larynth {

/// The component modules in the process, however they came in: loaded here, by the host, or with the program.
/// Each one that was found stays in memory until it says that it can go.
///
/// No lock is held while a module or the loader is called: either may come back here, and the loader runs
/// foreign code under a lock of its own. A class that is found takes no lock at all, and changes no word that
/// another thread's look-up changes.
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
    using Modules = std::vector<LoadedModule>;
    /// Does not change while look-ups can see it.
    struct List {
        Modules modules;                 // in load order
        std::uint64_t imageChanges = 0;  // CountImageChanges() when it was made
        std::unique_ptr<List> replaced;  // the one before it, which look-ups may still be walking
    };
    class LookUp;

    static HRESULT Ask(const List& list, REFCLSID rclsid, REFIID riid, void** ppv);
    static std::unique_ptr<List> ListModules();
    const List& UpToDate();
    void DropReplaced();

    UseCount lookUps_;
    std::mutex mutex_;  // guards all changes of what follows
    std::unique_ptr<List> newest_;
    std::atomic<const List*> current_ = nullptr;  // newest_; null when it lacks what may be in memory
};

}  // namespace larynth
