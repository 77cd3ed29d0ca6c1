// SPDX-License-Identifier: MIT
// Any bytes are a type library, with no more in it than they can hold, or refused.
#include <cstdint>
#include <cstdlib>
#include <span>

#include "runtime/typelib/Contents.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        std::size_t texts = 0, members = 0;
        for (const auto& type : larynth::ReadTypeLibrary(std::as_bytes(std::span(data, size))).Types) {
            texts += type.HelpString.size();
            members += type.Functions.size() + type.Interfaces.size();
        }
        if (texts > size || members > size) std::abort();
    } catch (const larynth::BadTypeLibrary&) {
        return 0;
    }
    return 0;
}
