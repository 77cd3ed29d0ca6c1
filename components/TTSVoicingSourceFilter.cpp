// SPDX-License-Identifier: MIT
#include "components/TTSVoicingSourceFilter.h"

#include <larynth/Packet.h>

#include "com/Boundary.h"
#include "com/OwnObject.h"
#include "components/TTSVoicingSourceStd.h"
#include "components/TTSVoicingSourceWave.h"

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
    const double F0 = core_.NextF0();
    if (sourceIsOurs_) return source_->SetF0(F0), S_OK;  // calls nobody
    return GuardedAlive([&] {
        const auto source = source_;  // which may take itself out of this filter meanwhile
        source->SetF0(F0);
        return S_OK;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceFilter::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    if (!CanCall(pIParams)) return E_POINTER;
    return GuardedAlive([&]() -> HRESULT {
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
    return GuardedAlive([&]() -> HRESULT {
        source_.Release();
        if (pIVoicingSource == nullptr) return S_OK;
        source_.Query(pIVoicingSource);
        sourceIsOurs_ = OwnObject<TTSVoicingSourceStd>::Find(source_.Get()) != nullptr ||
                        OwnObject<TTSVoicingSourceWave>::Find(source_.Get()) != nullptr;
        return S_OK;
    });
}

}  // namespace larynth
