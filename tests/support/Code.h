// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <utility>

#include <larynth/TypeLibrary.h>

/// A status code by its name, so that a failure line can be read; an unknown one in hexadecimal.
inline std::string Code(HRESULT hr) {
    // clang-format off
#define NAMED_CODE(code) std::pair<HRESULT, const char*>{code, #code}
    constexpr std::pair<HRESULT, const char*> kNames[] = {
        NAMED_CODE(S_OK), NAMED_CODE(S_FALSE), NAMED_CODE(E_NOTIMPL), NAMED_CODE(E_NOINTERFACE),
        NAMED_CODE(E_POINTER), NAMED_CODE(E_FAIL), NAMED_CODE(E_OUTOFMEMORY), NAMED_CODE(E_INVALIDARG),
        NAMED_CODE(CLASS_E_NOAGGREGATION), NAMED_CODE(CLASS_E_CLASSNOTAVAILABLE),
        NAMED_CODE(TYPE_E_CANTLOADLIBRARY), NAMED_CODE(TYPE_E_INVDATAREAD), NAMED_CODE(REGDB_E_READREGDB),
        NAMED_CODE(REGDB_E_WRITEREGDB), NAMED_CODE(REGDB_E_KEYMISSING), NAMED_CODE(REGDB_E_CLASSNOTREG),
        NAMED_CODE(CO_E_DLLNOTFOUND), NAMED_CODE(CO_E_ERRORINDLL), NAMED_CODE(CO_E_OBJNOTREG),
        NAMED_CODE(DISP_E_EXCEPTION)};
#undef NAMED_CODE
    // clang-format on
    for (const auto& [code, name] : kNames) {
        if (code == hr) return name;
    }
    std::array<char, 11> text{};
    std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(hr));
    return text.data();
}
