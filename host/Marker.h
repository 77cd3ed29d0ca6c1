// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

#include <larynth/Interface.h>

#include "host/ClientObject.h"

/// A text at a position of an utterance.
struct LARYNTH_INTERFACE(IUtteranceMarker, "4fb9bd62-1c5e-4a7e-93a1-d3a7bd17b0c5") : IUnknown {
    /// UTF-8, ended by a zero byte; valid as long as the marker. E_POINTER for null.
    virtual HRESULT LARYNTH_CALL GetText(LPCSTR* psText /*out*/) = 0;
};

namespace larynth {

/// Goes into the stream attached to a holder, and comes back attached to a sync element.
class Marker final : public ClientObject<IUtteranceMarker> {
  public:
    explicit Marker(std::string text) : text_(std::move(text)) {}

    HRESULT LARYNTH_CALL GetText(LPCSTR* psText) noexcept override {
        if (psText == nullptr) return E_POINTER;
        *psText = text_.c_str();
        return S_OK;
    }

  private:
    std::string text_;
};

}  // namespace larynth
