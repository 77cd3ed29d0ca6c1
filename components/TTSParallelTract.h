// SPDX-License-Identifier: MIT
#pragma once

#include "components/TractObject.h"
#include "engine/ParallelTractCore.h"

namespace larynth {

/// The parallel branch: seven resonators and a bypass side by side.
class TTSParallelTract final : public TractObject<ParallelTractCore, ITTSParallelTract> {
  public:
    using TractObject::TractObject;

    /// E_FAIL for a packet without parallel values; else the first failing resonator call's code, sections
    /// before it keep their new coefficients and the bypass stays. The code of GetAB is not examined; a gain
    /// that it does not deliver is 0. The result is the last GetC's.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;
};

}  // namespace larynth
