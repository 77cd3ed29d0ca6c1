// SPDX-License-Identifier: MIT
#include "components/TTSParallelTract.h"

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Resonators.h>

#include "com/Boundary.h"

namespace larynth {

HRESULT LARYNTH_CALL TTSParallelTract::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    return GuardedAlive([&]() -> HRESULT {
        ComPtr<ILarynthParallelTractParams> params;
        if (!params.TryQuery(pIParams)) return E_FAIL;
        const HRESULT last = SetSections<ITTSResonatorABCParams>(
            Frame::kParallelPoles,
            [&](int i, IUnknown** view, REFIID id) { return params->GetResonator(i, view, id); },
            [&](std::size_t i, const SectionCoefficients& abc) { core_.Poles().Set(i, abc); });
        double AB = 0.0;
        params->GetAB(&AB);
        core_.Bypass().SetGain(AB);
        return last;
    });
}

}  // namespace larynth
