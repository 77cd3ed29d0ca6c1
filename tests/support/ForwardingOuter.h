// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Fake.h"

namespace larynth {

/// An outer object that adds nothing: it passes every query but that for IUnknown on to its part. Code that
/// treats this system's own objects specially must not do so with a part of it.
class ForwardingOuter final : public test::Fake<IUnknown> {
  public:
    ForwardingOuter() : Fake(script_) {}

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        return riid == IID_IUnknown ? Fake::QueryInterface(riid, ppv) : part->QueryInterface(riid, ppv);
    }

    ComPtr<IUnknown> part;

  private:
    test::Script script_;
};

}  // namespace larynth
