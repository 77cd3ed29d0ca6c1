// SPDX-License-Identifier: MIT
/// What the generated assertions about the interface headers are written with.
#pragma once

#include <cstring>
#include <span>
#include <type_traits>

#include <larynth/Larynth.h>

/// A method, the slot that the type library gives it and the one that the compiler gave it.
struct AgreedSlot {
    const char* Method;
    int Described;
    int Compiled;
};

/// One row for every method of the library.
std::span<const AgreedSlot> AgreedSlots();

constexpr bool SameId(const GUID& left, const GUID& right) {
    for (int i = 0; i < 8; ++i) {
        if (left.Data4[i] != right.Data4[i]) return false;
    }
    return left.Data1 == right.Data1 && left.Data2 == right.Data2 && left.Data3 == right.Data3;
}

/// The slot that a pointer to a virtual method holds. In the Itanium C++ ABI its first word is the offset in
/// the method table, on x86-64 plus 1.
template <class Method>
int SlotOf(Method method) {
    std::size_t word = 0;
    std::memcpy(&word, &method, sizeof(word));
    return static_cast<int>(word / sizeof(void*));
}
