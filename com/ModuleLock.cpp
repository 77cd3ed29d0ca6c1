// SPDX-License-Identifier: MIT
#include "com/ModuleLock.h"

#include "com/UseCount.h"

namespace larynth {

namespace {
constinit UseCount uses;
}

void ModuleLock::Add() noexcept { uses.Begin(); }

void ModuleLock::Remove() noexcept { uses.End(); }

LONG ModuleLock::Count() noexcept {
    const std::uint64_t ended = uses.Ended();
    return static_cast<LONG>(uses.Begun() - ended);
}

}  // namespace larynth
