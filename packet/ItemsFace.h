// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Packet.h>

#include "packet/KlattPacketData.h"

namespace larynth {

/// The numbers of a packet by index, ID or name.
class ItemsFace : public PacketFace<ITTSDoublePacket> {
  public:
    HRESULT LARYNTH_CALL GetItemsCount(int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL GetIDFromIndex(int nIndex, int* pnID) noexcept override;
    HRESULT LARYNTH_CALL GetIndexFromID(int nID, int* pnIndex) noexcept override;
    HRESULT LARYNTH_CALL GetIndexFromName(LPSTR sName, int* pnIndex) noexcept override;
    HRESULT LARYNTH_CALL GetItemName(int nIndex, LPSTR pcBuffer, int nLen) noexcept override;
    HRESULT LARYNTH_CALL GetItemDescription(int nIndex, LPSTR pcBuffer, int nLen,
                                            int idLanguage) noexcept override;
    HRESULT LARYNTH_CALL GetItemValue(int nIndex, double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL SetItemValue(int nIndex, double dValue) noexcept override;
};

}  // namespace larynth
