// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <utility>

#include <larynth/TypeLibrary.h>

/// A status code by its name, so that a failure line can be read; an unknown one in hexadecimal.
inline std::string Code(HRESULT hr) {
    constexpr std::pair<HRESULT, const char*> kNames[] = {
        {S_OK, "S_OK"},
        {S_FALSE, "S_FALSE"},
        {E_NOTIMPL, "E_NOTIMPL"},
        {E_NOINTERFACE, "E_NOINTERFACE"},
        {E_POINTER, "E_POINTER"},
        {E_FAIL, "E_FAIL"},
        {E_OUTOFMEMORY, "E_OUTOFMEMORY"},
        {E_INVALIDARG, "E_INVALIDARG"},
        {CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION"},
        {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE"},
        {TYPE_E_CANTLOADLIBRARY, "TYPE_E_CANTLOADLIBRARY"},
        {TYPE_E_INVDATAREAD, "TYPE_E_INVDATAREAD"},
        {REGDB_E_READREGDB, "REGDB_E_READREGDB"},
        {REGDB_E_WRITEREGDB, "REGDB_E_WRITEREGDB"},
        {REGDB_E_KEYMISSING, "REGDB_E_KEYMISSING"},
        {REGDB_E_CLASSNOTREG, "REGDB_E_CLASSNOTREG"},
        {CO_E_DLLNOTFOUND, "CO_E_DLLNOTFOUND"},
        {CO_E_ERRORINDLL, "CO_E_ERRORINDLL"},
        {CO_E_OBJNOTREG, "CO_E_OBJNOTREG"},
        {DISP_E_EXCEPTION, "DISP_E_EXCEPTION"}};
    for (const auto& [code, name] : kNames) {
        if (code == hr) return name;
    }
    std::array<char, 11> text{};
    std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(hr));
    return text.data();
}
