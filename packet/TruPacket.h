// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Packet.h>

#include "packet/KlattPacketData.h"

namespace larynth {

/// The 16-bit form of a packet. It goes one way: words are never built from the packet's values.
class TruFace : public PacketFace<ITTSTruKlattParams> {
  public:
    /// The caller answers for 41 readable words; they are not probed.
    HRESULT LARYNTH_CALL SetTruPacket(unsigned short* pnPacket, LONG bConvert) noexcept override;
    HRESULT LARYNTH_CALL GetTruPacket(unsigned short* pnPacket, LONG bConvert) noexcept override;
    HRESULT LARYNTH_CALL ConvertFromTru() noexcept override;
    HRESULT LARYNTH_CALL ConvertToTru() noexcept override { return S_OK; }
};

}  // namespace larynth
