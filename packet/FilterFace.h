// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Packet.h>

#include "packet/PacketFace.h"

namespace larynth {

/// The cascade tract of a packet as one rational filter.
class FilterFace : public PacketFace<ILarynthVocalTractFilterParams> {
  public:
    HRESULT LARYNTH_CALL GetAlphaDegree(int* pnDegree) noexcept override;
    HRESULT LARYNTH_CALL GetBetaDegree(int* pnDegree) noexcept override;
    HRESULT LARYNTH_CALL SetAlpha(int nIndex, double dValue) noexcept override;
    HRESULT LARYNTH_CALL GetAlpha(int nIndex, double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL SetBeta(int nIndex, double dValue) noexcept override;
    HRESULT LARYNTH_CALL GetBeta(int nIndex, double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL ConvertFromFilter() noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL ConvertToFilter() noexcept override;
    HRESULT LARYNTH_CALL IsFilterDataValid(LONG* pbValid) noexcept override;
};

}  // namespace larynth
