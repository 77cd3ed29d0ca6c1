// SPDX-License-Identifier: MIT
/// The faces of a packet that hand out views of its resonators.
#pragma once

#include <larynth/Packet.h>

#include "packet/KlattPacketData.h"

namespace larynth {

class CascadeFace : public PacketFace<ILarynthVocalTractParams> {
  public:
    HRESULT LARYNTH_CALL GetResonatorsCount(int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL GetAntiResonatorsCount(int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL GetResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL GetAntiResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL IsResDataValid(LONG* pbValid) noexcept override;
};

class ParallelFace : public PacketFace<ILarynthParallelTractParams> {
  public:
    HRESULT LARYNTH_CALL GetResonatorsCount(int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL GetResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL SetAB(double dValue) noexcept override { return Store(ScalarItem::AB, dValue); }
    HRESULT LARYNTH_CALL GetAB(double* pdValue) noexcept override { return Read(ScalarItem::AB, pdValue); }
    HRESULT LARYNTH_CALL GetIDAB(int* pnID) noexcept override { return ReadID(ScalarItem::AB, pnID); }
};

}  // namespace larynth
