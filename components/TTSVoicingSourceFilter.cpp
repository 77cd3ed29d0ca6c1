// SPDX-License-Identifier: MIT
#include "components/TTSVoicingSourceFilter.h"

#include <larynth/Packet.h>

#include "com/Boundary.h"
#include "components/OwnPacket.h"

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

/// Truncation toward zero; NaN counts as 0. What lies far outside the table of tilts is brought nearer first,
/// as an int need not hold it.
int TruncatedTilt(double TL) {
    constexpr double kLimit = 1000.0;
    if (!(TL > -kLimit)) return 0;
    return static_cast<int>(TL < kLimit ? TL : kLimit);
}

}  // namespace

HRESULT LARYNTH_CALL TTSVoicingSourceFilter::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    if (!CanCall(pIParams)) return E_POINTER;
    if (KlattPacketData* const values = OwnPacketValues(pIParams)) {
        using enum ScalarItem;
        F0_ = values->Scalar(F0);
        FL_ = values->Scalar(FL);
        FLT_ = values->Scalar(FLT);
        tilt_.SetTilt(TruncatedTilt(values->Scalar(TL)), values->SampleFreq());
        return S_OK;
    }
    return Guarded([&]() -> HRESULT {
        ComPtr<ILarynthVoiceParams> voice;
        if (!voice.TryQuery(pIParams)) return S_OK;
        Read(*voice.Get(), &ILarynthVoiceParams::GetF0, F0_);
        Read(*voice.Get(), &ILarynthVoiceParams::GetFL, FL_);
        Read(*voice.Get(), &ILarynthVoiceParams::GetFLT, FLT_);

        ComPtr<ILarynthParams> params;
        params.Query(pIParams);
        double fs = 0.0;
        if (params) params->GetSampleFreq(&fs);
        double TL = 0.0;
        Read(*voice.Get(), &ILarynthVoiceParams::GetTL, TL);
        tilt_.SetTilt(TruncatedTilt(TL), fs);
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
