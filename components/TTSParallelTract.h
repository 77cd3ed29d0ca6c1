// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <larynth/Tracts.h>

#include "com/ComObject.h"
#include "components/ElementOutput.h"
#include "components/OwnPacket.h"
#include "engine/ParallelTractCore.h"

namespace larynth {

/// The parallel branch: seven resonators and a bypass side by side.
class TTSParallelTract final : public ComObject<ITTSParallelTract> {
  public:
    using RecognisedBy = ITTSParallelTract;
    using ComObject::ComObject;

    /// E_FAIL for a packet without parallel values; else the first failing resonator call's code, sections
    /// before it keep their new coefficients and the bypass stays. The code of GetAB is not examined; a gain
    /// that it does not deliver is 0. The result is the last GetC's.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;

    HRESULT LARYNTH_CALL CalculateNext(double dInputValue, double* pdValue) noexcept override {
        return WriteSample(core_.Store(core_.Process(dInputValue)), pdValue);
    }
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept override {
        return PutOutput(core_, pdValue);
    }

    /// For code that renders many samples at once.
    ParallelTractCore& Core() noexcept { return core_; }

  private:
    ParallelTractCore core_;
    std::array<PolePosition, kParallelPoles.count> polePositions_;
};

}  // namespace larynth
