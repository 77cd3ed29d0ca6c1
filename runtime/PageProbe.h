// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace larynth {

enum class Access { kRead, kWrite };

/// True when all of `size` bytes at `address` can be accessed; size > 0 and no wrap-around. Exact: the kernel
/// accesses each page in the program's place and reports a failure instead of raising a signal. That takes
/// one system call a page; pages become resident by it, as by an access. No content changes, not even for the
/// moment. What the kernel does not confirm counts as inaccessible.
bool CanAccess(std::uintptr_t address, std::size_t size, Access access) noexcept;

}  // namespace larynth
