// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

#include <larynth/Base.h>

namespace larynth {

/// A class identifier as the registry and messages spell it: upper-case hexadecimal digits in braces.
struct ClassText {
    explicit ClassText(REFCLSID id) {
        const auto& last = id.Data4;
        std::snprintf(text, sizeof(text), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", id.Data1,
                      id.Data2, id.Data3, last[0], last[1], last[2], last[3], last[4], last[5], last[6],
                      last[7]);
    }
    char text[39];
};

}  // namespace larynth
