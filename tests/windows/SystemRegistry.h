// SPDX-License-Identifier: MIT
/// The modules in the system's registry, as the system's own functions see them.
#pragma once

#include <set>
#include <sstream>
#include <string>

#include <larynth/Base.h>

#include "tests/support/Content.h"

using Keys = std::set<std::string>;

inline std::string Narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

/// A line for each key below `key` and for `key` itself: its path, default value and number of named values.
inline void List(HKEY key, const std::string& path, Keys& lines) {
    std::wstring text(1024, L'\0');
    DWORD subkeys = 0, values = 0, size = 2048;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr, nullptr,
                     nullptr, nullptr);
    std::string line = path;
    if (RegGetValueW(key, nullptr, nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &size) == ERROR_SUCCESS) {
        line += " = " + Narrow(text.c_str());
        --values;
    }
    lines.insert(values == 0 ? line : line + " + " + std::to_string(values));
    for (DWORD i = 0; i < subkeys; ++i) {
        DWORD length = static_cast<DWORD>(text.size());
        HKEY subkey = nullptr;
        RegEnumKeyExW(key, i, text.data(), &length, nullptr, nullptr, nullptr, nullptr);
        const std::string name = Narrow(text.c_str());
        if (name == "Wow6432Node") continue;  // the same once more, for programs of 32 bits
        if (RegOpenKeyExW(key, text.c_str(), 0, KEY_READ, &subkey) != ERROR_SUCCESS) continue;
        List(subkey, path + '\\' + (name == "Typelib" ? "TypeLib" : name), lines);
        RegCloseKey(subkey);
    }
}

/// All classes and type libraries that the system knows.
inline Keys KeysNow() {
    Keys keys;
    List(HKEY_CLASSES_ROOT, "HKEY_CLASSES_ROOT", keys);
    return keys;
}
