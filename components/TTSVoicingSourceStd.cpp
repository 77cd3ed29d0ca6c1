// SPDX-License-Identifier: MIT
#include "components/TTSVoicingSourceStd.h"

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>

#include "com/Boundary.h"

namespace larynth {

HRESULT LARYNTH_CALL TTSVoicingSourceStd::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    return GuardedAlive([&]() -> HRESULT {
        ComPtr<ILarynthVoiceParams> voice;
        if (!voice.TryQuery(pIParams)) return E_FAIL;
        ComPtr<ILarynthParams> params;
        const HRESULT result = params.QueryFrom(pIParams);
        if (!params) return E_FAIL;

        double fs = 0.0, AV = 0.0, F0 = 0.0, OQ = 0.0, FL = 0.0, FLT = 0.0, DI = 0.0, TL = 0.0;
        // FL, FLT and TL must be there, though only the filter uses them.
        const bool complete = params->GetSampleFreq(&fs) == S_OK && voice->GetAV(&AV) == S_OK &&
                              voice->GetF0(&F0) == S_OK && voice->GetOQ(&OQ) == S_OK &&
                              voice->GetFL(&FL) == S_OK && voice->GetFLT(&FLT) == S_OK &&
                              voice->GetDI(&DI) == S_OK && voice->GetTL(&TL) == S_OK;
        if (!complete) return E_FAIL;

        SetSampleFreq(fs);
        core_.SetParams(F0, AV, OQ, DI);
        return result;
    });
}

}  // namespace larynth
