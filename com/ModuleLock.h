// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Base.h>

namespace larynth {

/// What keeps the module loaded: live objects, clients' references on class factories, server locks. One
/// count per module, changed by any thread at any time.
class ModuleLock {
  public:
    static void Add() noexcept;
    static void Remove() noexcept;
    /// 0 only when nothing held the module at one moment of the call.
    static LONG Count() noexcept;
};

/// Holds the module as long as it lives; a member of whatever must keep the module loaded.
class ModuleHold {
  public:
    ModuleHold() noexcept { ModuleLock::Add(); }
    ~ModuleHold() { ModuleLock::Remove(); }
    ModuleHold(const ModuleHold&) = delete;
    ModuleHold& operator=(const ModuleHold&) = delete;
};

}  // namespace larynth
