// SPDX-License-Identifier: MIT
/// The out-pointer rule: what cannot be written for the size of its type gives E_POINTER, and nothing
/// changes.
#pragma once

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

template <class T>
HRESULT Put(T* pointer, std::type_identity_t<T> value) noexcept {
    if (!CanWrite(pointer)) return E_POINTER;
    *pointer = value;
    return S_OK;
}

}  // namespace larynth
