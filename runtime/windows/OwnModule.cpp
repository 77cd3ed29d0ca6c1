// SPDX-License-Identifier: MIT
// The resources of a module are those of its file.
#include "runtime/classes/OwnModule.h"

#include "runtime/windows/Text.h"

extern "C" IMAGE_DOS_HEADER
    __ImageBase;  // NOLINT(bugprone-reserved-identifier): where the linker put this module

namespace larynth {

namespace {

HMODULE OwnHandle() noexcept { return reinterpret_cast<HMODULE>(&__ImageBase); }

}  // namespace

std::optional<std::span<const std::byte>> OwnResource(LPCSTR type, LONG number) noexcept {
    const HMODULE own = OwnHandle();
    const HRSRC found = FindResourceA(own, MAKEINTRESOURCEA(number), type);
    const HGLOBAL loaded = found != nullptr ? LoadResource(own, found) : nullptr;
    if (loaded == nullptr) return std::nullopt;
    return std::span(static_cast<const std::byte*>(LockResource(loaded)), SizeofResource(own, found));
}

std::string OwnPath() { return PathOf(OwnHandle()); }

}  // namespace larynth
