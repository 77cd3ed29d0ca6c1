// SPDX-License-Identifier: MIT
#include <cerrno>
#include <cstdint>

#include <larynth/Runtime.h>

#include "runtime/PageProbe.h"
#include "runtime/StackWindow.h"

namespace larynth {

namespace {

/// Out-pointers almost always name a caller's local variable, which costs two comparisons; the kernel is
/// asked about the rest.
[[gnu::always_inline]] inline BOOL IsBad(const void* memory, std::size_t size, Access access) noexcept {
    if (size == 0) return FALSE;
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    if (InStackWindow(address, size)) return FALSE;
    if (memory == nullptr || size - 1 > UINTPTR_MAX - address) return TRUE;
    const int errorOfCaller = errno;
    const bool accessible = CanAccess(address, size, access);
    errno = errorOfCaller;
    return accessible ? FALSE : TRUE;
}

}  // namespace

}  // namespace larynth

BOOL LARYNTH_CALL IsBadReadPtr(const void* pMemory, std::size_t nBytes) {
    return larynth::IsBad(pMemory, nBytes, larynth::Access::kRead);
}

BOOL LARYNTH_CALL IsBadWritePtr(void* pMemory, std::size_t nBytes) {
    return larynth::IsBad(pMemory, nBytes, larynth::Access::kWrite);
}
