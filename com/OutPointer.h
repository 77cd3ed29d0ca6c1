// SPDX-License-Identifier: MIT
/// The out-pointer rule: what cannot be written for the size of its type gives E_POINTER, and nothing
/// changes.
#pragma once

#include <type_traits>
#include <utility>

#include <larynth/Runtime.h>

namespace larynth {

template <class T>
bool CanWrite(T* pointer) noexcept {
    return IsBadWritePtr(pointer, sizeof(T)) == FALSE;
}

inline bool CanWriteBytes(void* pointer, std::size_t size) noexcept {
    return pointer != nullptr && IsBadWritePtr(pointer, size) == FALSE;
}

/// While it lives, CanCall answers for `object` without asking the system, on this thread. For code that
/// passes on an object which it has already called and which its own caller keeps alive.
class KnownCallable {
  public:
    explicit KnownCallable(IUnknown* object) noexcept : outer_(std::exchange(object_, object)) {}
    ~KnownCallable() { object_ = outer_; }
    KnownCallable(const KnownCallable&) = delete;
    KnownCallable& operator=(const KnownCallable&) = delete;

    static bool Is(IUnknown* object) noexcept { return object != nullptr && object == object_; }

  private:
    inline static constinit thread_local IUnknown* object_ = nullptr;
    IUnknown* outer_;
};

/// True when at least the object's first pointer can be read, so that it can be called.
inline bool CanCall(IUnknown* object) noexcept {
    return KnownCallable::Is(object) || IsBadReadPtr(object, sizeof(void*)) == FALSE;
}

template <class T>
HRESULT Put(T* pointer, std::type_identity_t<T> value) noexcept {
    if (!CanWrite(pointer)) return E_POINTER;
    *pointer = value;
    return S_OK;
}

}  // namespace larynth
