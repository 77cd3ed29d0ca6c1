// SPDX-License-Identifier: MIT
/// How the memory probes find out what can be accessed.
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

/// The calling thread's stack: addresses from `low` up to but not including `high`. Both 0 where the system
/// does not tell.
struct StackBounds {
    std::uintptr_t low = 0;
    std::uintptr_t high = 0;
    bool known = false;
};

/// Asked of the system once per thread; lives as long as the thread.
const StackBounds& OwnStackBounds() noexcept;

/// True when all of `size` bytes at `address` lie between the caller's frame and the base of the thread's
/// stack: what is there is in use by the thread's own callers, hence mapped and writable. False says nothing.
/// On a stack that is not the thread's own (a fiber's, a signal handler's) there is no window, and none in
/// bounds that were not asked for yet.
[[gnu::always_inline]] inline bool InStackWindow(const StackBounds& stack, std::uintptr_t address,
                                                 std::size_t size) noexcept {
    const auto frame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (frame < stack.low || frame >= stack.high) return false;
    return address >= frame && address < stack.high && size <= stack.high - address;
}

}  // namespace larynth
