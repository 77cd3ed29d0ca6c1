// SPDX-License-Identifier: MIT
#include "components/TTSVocalTractR.h"

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Resonators.h>

#include "com/Boundary.h"

namespace larynth {

HRESULT LARYNTH_CALL TTSVocalTractR::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    return GuardedAlive([&]() -> HRESULT {
        ComPtr<ILarynthVocalTractParams> params;
        if (!params.TryQuery(pIParams)) return E_FAIL;
        SetSections<ITTSResonatorABCParams>(
            Frame::kCascadePoles,
            [&](int i, IUnknown** view, REFIID id) { return params->GetResonator(i, view, id); },
            [&](std::size_t i, const SectionCoefficients& abc) { core_.Poles().Set(i, abc); });
        return SetSections<ITTSAntiResonatorABCParams>(
            Frame::kCascadeZeros,
            [&](int i, IUnknown** view, REFIID id) { return params->GetAntiResonator(i, view, id); },
            [&](std::size_t, const SectionCoefficients& abc) { core_.Zero().SetABC(abc.A, abc.B, abc.C); });
    });
}

}  // namespace larynth
