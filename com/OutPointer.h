// SPDX-License-Identifier: MIT
/// The out-pointer rule: what cannot be written for the size of its type gives E_POINTER, and nothing
/// changes.
#pragma once

#include <algorithm>
#include <string_view>
#include <type_traits>

#include <larynth/Runtime.h>

namespace larynth {

template <class T>
bool CanWrite(T* pointer) noexcept {
    return IsBadWritePtr(pointer, sizeof(T)) == FALSE;  // NOLINT(bugprone-sizeof-expression): pointers, too
}

inline bool CanWriteBytes(void* pointer, std::size_t size) noexcept {
    return pointer != nullptr && IsBadWritePtr(pointer, size) == FALSE;
}

/// True when at least the object's first pointer can be read, so that it can be called.
inline bool CanCall(IUnknown* object) noexcept { return IsBadReadPtr(object, sizeof(void*)) == FALSE; }

/// True for a buffer that holds what its length promises. A negative length promises nothing.
inline bool CanFill(LPSTR buffer, int length) noexcept {
    return CanWriteBytes(buffer, static_cast<std::size_t>(std::max(length, 0)));
}

/// Copies the text and a terminating zero into a buffer that can be filled; nothing, and E_FAIL, when it is
/// too short.
inline HRESULT PutText(LPSTR buffer, int length, std::string_view text) noexcept {
    if (length < static_cast<int>(text.size()) + 1) return E_FAIL;
    *std::copy(text.begin(), text.end(), buffer) = '\0';
    return S_OK;
}

template <class T>
HRESULT Put(T* pointer, std::type_identity_t<T> value) noexcept {
    if (!CanWrite(pointer)) return E_POINTER;
    *pointer = value;
    return S_OK;
}

}  // namespace larynth
