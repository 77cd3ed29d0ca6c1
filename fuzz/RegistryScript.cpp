// SPDX-License-Identifier: MIT
// Any text is a script or an error at one of its places.
#include "module/RegistryScript.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        static_cast<void>(larynth::ParseRegistryScript(text, "/folder/module.so"));
    } catch (const larynth::ScriptError& error) {
        const auto [line, column] = error.Where();
        if (line < 1 || line > std::ranges::count(text, '\n') + 1) std::abort();
        if (column < 1 || static_cast<std::size_t>(column) > size + 1) std::abort();
    }
    return 0;
}
