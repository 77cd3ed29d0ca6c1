// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <larynth/ComPtr.h>

#include "com/Boundary.h"
#include "com/OwnObject.h"

namespace larynth {

/// Gives back the creator's reference.
struct CreatorRelease {
    template <class Class>
    void operator()(Class* object) const noexcept {
        object->Inner().Release();
    }
};

/// The creator's hold on a new object while it is being set up.
template <class Class>
using Created = std::unique_ptr<Class, CreatorRelease>;

/// A new object, standing alone or as a part of `outer`. Raises whatever its construction raises.
template <class Class>
Created<Class> MakeObject(IUnknown* outer = nullptr) {
    Created<Class> object(new Class(outer));
    if constexpr (requires { typename Class::RecognisedBy; }) OwnObject<Class>::Learn(*object);
    return object;
}

/// Creates an object of one class and writes its `riid` interface; every class table entry has this form. An
/// object that does not answer `riid` is destroyed. E_OUTOFMEMORY when there is no memory for it.
template <class Class>
HRESULT CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) noexcept {
    return Guarded([&] { return MakeObject<Class>(pUnkOuter)->Inner().QueryInterface(riid, ppv); },
                   E_OUTOFMEMORY);
}

}  // namespace larynth
