// SPDX-License-Identifier: MIT
#pragma once

/// Memory that can be read and not written, as a pointer of any type.
template <class T>
T* ReadOnly() {
    alignas(16) static constexpr unsigned char kMemory[64] = {1};
    return reinterpret_cast<T*>(const_cast<unsigned char*>(kMemory));
}
