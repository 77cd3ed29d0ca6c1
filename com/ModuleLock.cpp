// SPDX-License-Identifier: MIT
#include "com/ModuleLock.h"

#include <atomic>

namespace larynth {

namespace {
constinit std::atomic<LONG> lockCount{0};
}

void ModuleLock::Add() noexcept { lockCount.fetch_add(1); }

void ModuleLock::Remove() noexcept { lockCount.fetch_sub(1); }

LONG ModuleLock::Count() noexcept { return lockCount.load(); }

}  // namespace larynth
