// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Sources.h>

#include "com/ComObject.h"
#include "components/ElementOutput.h"
#include "engine/VoicingSourceCore.h"

namespace larynth {

/// The standard glottal source. Spectral tilt and flutter are applied behind it, by TTSVoicingSourceFilter.
class TTSVoicingSourceStd final : public ComObject<ITTSVoicingSource, ITTSVoicingSourceStd> {
  public:
    using RecognisedBy = ITTSVoicingSource;
    using ComObject::ComObject;

    /// A frequency of 0 gives an infinite sample time: every sample then starts a period.
    HRESULT LARYNTH_CALL SetSampleFreq(double dValue) noexcept override {
        return core_.SetSampleTime(1.0 / dValue), S_OK;
    }
    /// Moves the period only; the frame's F0 stays.
    HRESULT LARYNTH_CALL SetF0(double dValue) noexcept override {
        return core_.SetPeriodFromF0(dValue), S_OK;
    }
    HRESULT LARYNTH_CALL SetVolume(double dValue) noexcept override { return core_.SetAV(dValue), S_OK; }
    HRESULT LARYNTH_CALL Reset() noexcept override { return core_.RestartPeriod(), S_OK; }

    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) noexcept override {
        return WriteSample(core_.Evaluate(), pdValue);
    }
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept override {
        return PutOutput(core_, pdValue);
    }

    /// E_FAIL, with nothing changed, when the packet lacks an interface or a getter gives anything but S_OK.
    /// The result is the success code of the query for ILarynthParams.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;

    HRESULT LARYNTH_CALL SetOQ(double dValue) noexcept override { return core_.SetOQ(dValue), S_OK; }
    HRESULT LARYNTH_CALL SetFL(double /*dValue*/) noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL SetFLT(double /*dValue*/) noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL SetDI(double dValue) noexcept override { return core_.SetDI(dValue), S_OK; }
    HRESULT LARYNTH_CALL SetTL(double /*dValue*/) noexcept override { return S_OK; }

    /// The element inside, for whoever recognised the object as this module's own.
    VoicingSourceCore& Element() noexcept { return core_; }

  private:
    VoicingSourceCore core_;
};

}  // namespace larynth
