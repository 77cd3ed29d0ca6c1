// SPDX-License-Identifier: MIT
#include "packet/LarynthParams.h"

#include "com/Create.h"

namespace larynth {

HRESULT LarynthParams::Copy(IUnknown*) noexcept { return E_FAIL; }

HRESULT LarynthParams::Clone(REFIID Id, IUnknown** ppClone) noexcept {
    return Guarded([&]() -> HRESULT {
        if (!CanWrite(ppClone)) return E_POINTER;
        const Created<LarynthParams> clone = MakeObject<LarynthParams>();
        clone->CopyFrom(*this);
        return clone->Inner().QueryInterface(Id, reinterpret_cast<void**>(ppClone));
    });
}

}  // namespace larynth
