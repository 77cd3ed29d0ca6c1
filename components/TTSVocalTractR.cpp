// SPDX-License-Identifier: MIT
#include "components/TTSVocalTractR.h"

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Resonators.h>

#include "com/Boundary.h"

namespace larynth {

HRESULT LARYNTH_CALL TTSVocalTractR::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    return Guarded([&]() -> HRESULT {
        ComPtr<ILarynthVocalTractParams> params;
        if (!params.TryQuery(pIParams)) return E_FAIL;
        SetSections<ITTSResonatorABCParams>(core_.Resonators(), [&](int i, IUnknown** view, REFIID id) {
            return params->GetResonator(i, view, id);
        });
        return SetSections<ITTSAntiResonatorABCParams>(
            core_.AntiResonators(),
            [&](int i, IUnknown** view, REFIID id) { return params->GetAntiResonator(i, view, id); });
    });
}

}  // namespace larynth
