// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>
#include <larynth/Sources.h>

#include "com/ComObject.h"
#include "components/ElementOutput.h"
#include "engine/Flutter.h"
#include "engine/TiltFilter.h"

namespace larynth {

/// The stage behind the voicing source: tilts the source's spectrum, and lets its fundamental frequency
/// flutter by setting F0 on the source it holds, for the source's next sample.
class TTSVoicingSourceFilter final : public ComObject<ITTSVoicingSourceFilter> {
  public:
    using RecognisedBy = ITTSVoicingSourceFilter;
    using ComObject::ComObject;

    HRESULT LARYNTH_CALL CalculateNext(double dInputValue, double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept override {
        return PutOutput(tilt_, pdValue);
    }

    /// E_POINTER for a null or unreadable packet. A packet without voice values changes nothing: S_OK. The
    /// first failing call's code otherwise; values read before it are in force. The code of GetSampleFreq is
    /// not examined; a frequency that it does not deliver is 0, which keeps the tilt.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID riid) noexcept override;

    /// Gives the held source back first, so that a failed query, whose code is the result, leaves none.
    HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pIVoicingSource, REFIID riid) noexcept override;

    /// For code that renders many samples at once; without a reference.
    ITTSVoicingSource* Source() const noexcept { return source_.Get(); }
    bool Flutters() const noexcept { return source_ && Flutter::Applies(F0_, FL_); }
    double NextF0() noexcept { return flutter_.Step(F0_, FL_, FLT_); }
    Flutter& FlutterState() noexcept { return flutter_; }
    double F0() const noexcept { return F0_; }
    double FL() const noexcept { return FL_; }
    double FLT() const noexcept { return FLT_; }
    TiltFilter& Tilt() noexcept { return tilt_; }

  private:
    TiltFilter tilt_;
    ComPtr<ITTSVoicingSource> source_;
    double F0_ = 0.0;   // Hz, the centre of the flutter
    double FL_ = 0.0;   // largest excursion, a fraction of F0
    double FLT_ = 0.0;  // 10⁻⁵ of flutter time per sample
    Flutter flutter_;
};

inline HRESULT LARYNTH_CALL TTSVoicingSourceFilter::CalculateNext(double dInputValue,
                                                                  double* pdValue) noexcept {
    if (Flutters()) source_->SetF0(NextF0());
    return WriteSample(tilt_.Store(tilt_.Process(dInputValue)), pdValue);
}

}  // namespace larynth
