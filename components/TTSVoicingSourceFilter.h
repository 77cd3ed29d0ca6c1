// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>
#include <larynth/Sources.h>

#include "com/Boundary.h"
#include "com/ComObject.h"
#include "components/ElementOutput.h"
#include "engine/VoicingFilterCore.h"

namespace larynth {

/// The stage behind the voicing source: tilts the source's spectrum, and lets its fundamental frequency
/// flutter by setting F0 on the source it holds, for the source's next sample.
class TTSVoicingSourceFilter final : public ComObject<ITTSVoicingSourceFilter> {
  public:
    using RecognisedBy = ITTSVoicingSourceFilter;
    using ComObject::ComObject;

    /// E_FAIL, with the flutter moved on and nothing else done, when the held source raises an exception.
    HRESULT LARYNTH_CALL CalculateNext(double dInputValue, double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept override {
        return PutOutput(core_, pdValue);
    }

    /// E_POINTER for a null or unreadable packet. A packet without voice values changes nothing: S_OK. The
    /// first failing call's code otherwise; values read before it are in force. The code of GetSampleFreq is
    /// not examined; a frequency that it does not deliver is 0, which keeps the tilt.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;

    /// Gives the held source back first, so that a failed query, whose code is the result, leaves none.
    HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pIVoicingSource, REFIID riid) noexcept override;

    /// The element inside, for whoever recognised the object as this module's own.
    VoicingFilterCore& Element() noexcept { return core_; }

    /// The source whose F0 flutter moves, without a reference.
    ITTSVoicingSource* Source() const noexcept { return source_.Get(); }

  private:
    /// Moves the source's F0, whose result does not count unless it raises an exception. Apart, so that the
    /// usual sample stays in registers.
    [[gnu::noinline]] HRESULT MoveSource() noexcept;

    VoicingFilterCore core_;
    ComPtr<ITTSVoicingSource> source_;
    bool sourceIsOurs_ = false;  // of what is held, if anything
};

inline HRESULT LARYNTH_CALL TTSVoicingSourceFilter::CalculateNext(double dInputValue,
                                                                  double* pdValue) noexcept {
    if (source_ && core_.Flutters()) {
        if (const HRESULT hr = MoveSource(); FAILED(hr)) return hr;
    }
    return WriteSample(core_.Store(core_.Process(dInputValue)), pdValue);
}

}  // namespace larynth
