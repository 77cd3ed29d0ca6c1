// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>

#include "tests/support/StackObject.h"

namespace larynth {

/// An outer object that adds nothing: it passes every query but that for IUnknown on to its part. Code that
/// treats this system's own objects specially must not do so with a part of it.
class ForwardingOuter final : public StackObject<IUnknown> {
  public:
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        return riid == IID_IUnknown ? StackObject::QueryInterface(riid, ppv)
                                    : part->QueryInterface(riid, ppv);
    }

    ComPtr<IUnknown> part;
};

}  // namespace larynth
