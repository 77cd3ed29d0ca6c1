// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Base.h>

namespace larynth {

/// What keeps the module loaded: live objects, extra references on class factories, server locks. One count
/// per module, changed atomically.
class ModuleLock {
  public:
    static void Add() noexcept;
    static void Remove() noexcept;
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
