// SPDX-License-Identifier: MIT
#include "runtime/classes/OwnModule.h"

#include <cstdlib>
#include <dlfcn.h>
#include <memory>

#include "runtime/classes/ResourceTable.h"

namespace larynth {

std::optional<std::span<const std::byte>> OwnResource(LPCSTR type, LONG number) noexcept {
    return FindInTable(LarynthResources, type, number);
}

std::string OwnPath() {
    Dl_info own{};
    if (dladdr(LarynthResources, &own) == 0 || own.dli_fname == nullptr) return {};
    // The loader keeps the path that it was given. An absolute one is not resolved further: it may lead over
    // a link that is meant to be followed each time.
    if (own.dli_fname[0] == '/') return own.dli_fname;
    const std::unique_ptr<char, void (*)(void*)> resolved(realpath(own.dli_fname, nullptr), std::free);
    return resolved != nullptr ? resolved.get() : std::string();
}

}  // namespace larynth
