// SPDX-License-Identifier: MIT
#pragma once

#include "components/TractObject.h"
#include "engine/CascadeFilterTract.h"

namespace larynth {

/// The cascade tract as one rational filter. It takes the packet's filter values as they stand: who sets
/// resonators asks the packet to convert them first.
class TTSVocalTractF final : public TractObject<CascadeFilterTract, ITTSVocalTract, ITTSVocalTractF> {
  public:
    using TractObject::TractObject;

    /// E_FAIL, with nothing changed, for a packet without filter values and for a degree beyond 12 (alpha) or
    /// 3 (beta). Coefficients from a packet's degree on stay as they are. The getters' codes are not
    /// examined; a degree or coefficient that they do not deliver is 0.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;
};

}  // namespace larynth
