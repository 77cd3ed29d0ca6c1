// SPDX-License-Identifier: MIT
#include "components/TTSVoicingSourceFilter.h"

#include <larynth/Packet.h>

#include "com/Boundary.h"

namespace larynth {
namespace {

using Getter = HRESULT (LARYNTH_CALL ILarynthVoiceParams::*)(double*);

/// Lets a getter write one field, whatever its result. The packet sees a variable on the stack: probing that
/// costs no system call.
void Read(ILarynthVoiceParams& voice, Getter get, double& field) {
    double value = field;
    const HRESULT hr = (voice.*get)(&value);
    field = value;
    Zelvani::CheckResult(hr);
}

}  // namespace

HRESULT TTSVoicingSourceFilter::MoveSource() noexcept {
    return Guarded([this] {
        source_->SetF0(core_.NextF0());
        return S_OK;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceFilter::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    if (!CanCall(pIParams)) return E_POINTER;
    return Guarded([&]() -> HRESULT {
        ComPtr<ILarynthVoiceParams> voice;
        if (!voice.TryQuery(pIParams)) return S_OK;
        Read(*voice.Get(), &ILarynthVoiceParams::GetF0, core_.F0);
        Read(*voice.Get(), &ILarynthVoiceParams::GetFL, core_.FL);
        Read(*voice.Get(), &ILarynthVoiceParams::GetFLT, core_.FLT);

        ComPtr<ILarynthParams> params;
        params.Query(pIParams);
        double fs = 0.0;
        if (params) params->GetSampleFreq(&fs);
        double TL = 0.0;
        Read(*voice.Get(), &ILarynthVoiceParams::GetTL, TL);
        core_.SetTilt(TL, fs);
        return S_OK;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceFilter::SetVoicingSource(IUnknown* pIVoicingSource,
                                                              REFIID /*riid*/) noexcept {
    source_.Release();
    if (pIVoicingSource == nullptr) return S_OK;
    return Guarded([&]() -> HRESULT {
        source_.Query(pIVoicingSource);
        return S_OK;
    });
}

}  // namespace larynth
