// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include <larynth/Base.h>

namespace larynth {

/// Texts are UTF-8 here and UTF-16 in the system. What is malformed becomes U+FFFD.
inline std::wstring Wide(std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');  // never more units than bytes
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

inline std::string Utf8(std::wstring_view wide) {
    const int length = static_cast<int>(wide.size());
    std::string text(3 * wide.size(), '\0');  // at most so many bytes
    text.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_UTF8, 0, wide.data(), length, text.data(), static_cast<int>(text.size()), nullptr, nullptr)));
    return text;
}

/// The path of a module's file; empty when the system does not tell.
inline std::string PathOf(HMODULE module) {
    constexpr DWORD kMost = 32768;  // characters of a path, with its end
    std::wstring path(kMost, L'\0');
    const DWORD length = GetModuleFileNameW(module, path.data(), kMost);
    return length < kMost ? Utf8({path.data(), length}) : std::string();
}

}  // namespace larynth
