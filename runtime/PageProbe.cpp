// SPDX-License-Identifier: MIT
#include "runtime/PageProbe.h"

#include <cerrno>
#include <csignal>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

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

}  // namespace

bool CanAccess(std::uintptr_t address, std::size_t size, Access access) noexcept {
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t lastPage = (address + (size - 1)) & ~(pageSize - 1);
    for (std::uintptr_t page = address & ~(pageSize - 1);; page += pageSize) {
        if (!(access == Access::kRead ? CanReadPage(page) : CanWritePage(page))) return false;
        if (page == lastPage) return true;
    }
}

}  // namespace larynth
