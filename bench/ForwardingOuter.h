// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Speech.h>

#include "face/ClientObject.h"

namespace larynth::bench {

/// An outer object that adds nothing: it aggregates a component and passes every query on.
///
/// A synthesizer takes the way through the interfaces when a component is part of something foreign. The
/// calls that it makes then are the component's own, with nothing in between.
class ForwardingOuter final : public ClientObject<IUnknown> {
  public:
    static ComPtr<IUnknown> Around(REFCLSID rclsid) {
        auto* const outer = new ForwardingOuter;
        auto owned = ComPtr<IUnknown>::Adopt(outer);
        Require(outer->inner_.Create(rclsid, outer), "aggregate a component");
        return owned;
    }

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        if (riid == IID_IUnknown) return ClientObject::QueryInterface(riid, ppv);
        return inner_->QueryInterface(riid, ppv);
    }

  private:
    ComPtr<IUnknown> inner_;
};

}  // namespace larynth::bench
