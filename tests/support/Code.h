// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdio>
#include <string>

#include <larynth/TypeLibrary.h>

/// A status code by its name, so that a failure line can be read; an unknown one in hexadecimal.
inline std::string Code(HRESULT hr) {
    switch (hr) {
        case S_OK:
            return "S_OK";
        case S_FALSE:
            return "S_FALSE";
        case E_NOTIMPL:
            return "E_NOTIMPL";
        case E_NOINTERFACE:
            return "E_NOINTERFACE";
        case E_POINTER:
            return "E_POINTER";
        case E_FAIL:
            return "E_FAIL";
        case E_OUTOFMEMORY:
            return "E_OUTOFMEMORY";
        case E_INVALIDARG:
            return "E_INVALIDARG";
        case CLASS_E_NOAGGREGATION:
            return "CLASS_E_NOAGGREGATION";
        case CLASS_E_CLASSNOTAVAILABLE:
            return "CLASS_E_CLASSNOTAVAILABLE";
        case TYPE_E_CANTLOADLIBRARY:
            return "TYPE_E_CANTLOADLIBRARY";
        case TYPE_E_INVDATAREAD:
            return "TYPE_E_INVDATAREAD";
        case REGDB_E_READREGDB:
            return "REGDB_E_READREGDB";
        case REGDB_E_WRITEREGDB:
            return "REGDB_E_WRITEREGDB";
        case REGDB_E_KEYMISSING:
            return "REGDB_E_KEYMISSING";
        case REGDB_E_CLASSNOTREG:
            return "REGDB_E_CLASSNOTREG";
        case CO_E_DLLNOTFOUND:
            return "CO_E_DLLNOTFOUND";
        case CO_E_ERRORINDLL:
            return "CO_E_ERRORINDLL";
        case CO_E_OBJNOTREG:
            return "CO_E_OBJNOTREG";
        case DISP_E_EXCEPTION:
            return "DISP_E_EXCEPTION";
        default:
            break;
    }
    std::array<char, 11> text{};
    std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(hr));
    return text.data();
}
