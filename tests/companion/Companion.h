// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <larynth/Larynth.h>

#include "tests/support/Code.h"

/// A new object of one of the companion's classes, created as a host creates it.
template <class Interface>
ComPtr<Interface> New(REFCLSID id) {
    EXPECT_EQ(Code(LarynthLoadModule(LARYNTH_COMPANION_MODULE)), Code(S_OK)) << LarynthLastError();
    ComPtr<Interface> object;
    EXPECT_EQ(Code(object.Create(id)), Code(S_OK));
    return object;
}

/// A host's object that only counts; it lives where the test puts it.
class CountedObject : public IUnknown {
  public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        const bool answered = riid == IID_IUnknown;
        // On failure a client's object need not write null: the companion must.
        *ppv = answered ? static_cast<void*>(this) : reinterpret_cast<void*>(1);
        if (answered) AddRef();
        return answered ? S_OK : E_NOINTERFACE;
    }
    ULONG AddRef() override { return ++References; }
    ULONG Release() override { return --References; }

    ULONG References = 1;
};

/// Memory that can be read and not written, for a pointer of any type.
template <class T>
T* ReadOnly() {
    alignas(16) static const char kMemory[16] = {1};
    return reinterpret_cast<T*>(const_cast<char*>(kMemory));
}
