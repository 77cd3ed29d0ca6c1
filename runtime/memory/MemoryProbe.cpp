// SPDX-License-Identifier: MIT
#include "runtime/memory/MemoryProbe.h"

#include <cerrno>
#include <csignal>
#include <linux/futex.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <larynth/Runtime.h>

namespace larynth {

namespace {

// Both calls are as old as the kernel's threads, so that no kernel lacks them and no sandbox can do without,
// and cost less than any call that is meant for the purpose: half a populate advice, a quarter of
// process_vm_readv.

/// The kernel copies the signal set from the page, then finds that no such operation exists.
bool CanReadPage(std::uintptr_t page) noexcept {
    constexpr int kNoSuchOperation = ~0;
    constexpr std::size_t kSetSize = _NSIG / 8;
    return syscall(SYS_rt_sigprocmask, kNoSuchOperation, page, nullptr, kSetSize) == -1 && errno == EINVAL;
}

/// The kernel adds 0 to the page's first word, atomically: no store of another thread is lost. Nobody waits
/// on `nobody`. Should the word be in use as a futex, a waiter is woken only if it compares equal, to the
/// least likely value that can be given; waiters have to expect that from anyone.
bool CanWritePage(std::uintptr_t page) noexcept {
    constexpr unsigned kAddNothing = FUTEX_OP(unsigned{FUTEX_OP_ADD}, 0U, unsigned{FUTEX_OP_CMP_EQ}, 0x800U);
    std::uint32_t nobody = 0;
    return syscall(SYS_futex, &nobody, FUTEX_WAKE_OP_PRIVATE, 0, 0L, page, kAddNothing) >= 0;
}

// Reached without a call of the loader: this is part of every probe.
[[gnu::tls_model("initial-exec")]] constinit thread_local StackBounds ownStack;

[[gnu::noinline]] void AskSystem(StackBounds& stack) noexcept {
    stack.known = true;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return;
    void* low = nullptr;
    std::size_t size = 0;
    if (pthread_attr_getstack(&attributes, &low, &size) == 0) {
        stack.low = reinterpret_cast<std::uintptr_t>(low);
        stack.high = stack.low + size;
    }
    pthread_attr_destroy(&attributes);
}

/// Apart from the usual case, which then needs no registers of its own.
[[gnu::noinline]] BOOL IsBadElsewhere(const void* memory, std::size_t size, Access access) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    if (InStackWindow(OwnStackBounds(), address, size)) return FALSE;  // the thread's first probe
    if (memory == nullptr || size - 1 > UINTPTR_MAX - address) return TRUE;
    const int errorOfCaller = errno;
    const bool accessible = CanAccess(address, size, access);
    errno = errorOfCaller;
    return accessible ? FALSE : TRUE;
}

/// Out-pointers almost always name a caller's local variable, which costs two comparisons; the kernel is
/// asked about the rest.
[[gnu::always_inline]] inline BOOL IsBad(const void* memory, std::size_t size, Access access) noexcept {
    if (size == 0 || InStackWindow(ownStack, reinterpret_cast<std::uintptr_t>(memory), size)) return FALSE;
    return IsBadElsewhere(memory, size, access);
}

}  // namespace

bool CanAccess(std::uintptr_t address, std::size_t size, Access access) noexcept {
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t lastPage = (address + (size - 1)) & ~(pageSize - 1);
    for (std::uintptr_t page = address & ~(pageSize - 1);; page += pageSize) {
        if (!(access == Access::kRead ? CanReadPage(page) : CanWritePage(page))) return false;
        if (page == lastPage) return true;
    }
}

const StackBounds& OwnStackBounds() noexcept {
    StackBounds& stack = ownStack;
    if (!stack.known) AskSystem(stack);
    return stack;
}

}  // namespace larynth

BOOL LARYNTH_CALL IsBadReadPtr(const void* pMemory, std::size_t nBytes) {
    return larynth::IsBad(pMemory, nBytes, larynth::Access::kRead);
}

BOOL LARYNTH_CALL IsBadWritePtr(void* pMemory, std::size_t nBytes) {
    return larynth::IsBad(pMemory, nBytes, larynth::Access::kWrite);
}
