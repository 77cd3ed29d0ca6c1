// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Tracts.h>

#include "com/ComObject.h"
#include "components/ElementOutput.h"
#include "engine/CascadeFilterTract.h"

namespace larynth {

/// The cascade tract as one rational filter. It takes the packet's filter values as they stand: who sets
/// resonators asks the packet to convert them first.
class TTSVocalTractF final : public ComObject<ITTSVocalTract, ITTSVocalTractF> {
  public:
    using RecognisedBy = ITTSVocalTract;
    using ComObject::ComObject;

    /// E_FAIL, with nothing changed, for a packet without filter values and for a degree beyond 12 (alpha) or
    /// 3 (beta). Coefficients from a packet's degree on stay as they are. The getters' codes are not
    /// examined; a degree or coefficient that they do not deliver is 0.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;

    HRESULT LARYNTH_CALL CalculateNext(double dInputValue, double* pdValue) noexcept override {
        return WriteSample(core_.Store(core_.Process(dInputValue)), pdValue);
    }
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept override {
        return PutOutput(core_, pdValue);
    }

  private:
    CascadeFilterTract core_;
};

}  // namespace larynth
