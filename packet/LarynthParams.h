// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Packet.h>

#include "com/ComObject.h"
#include "packet/FilterForm.h"
#include "packet/FrameFaces.h"
#include "packet/ItemsFace.h"
#include "packet/KlattPacketData.h"
#include "packet/TractFaces.h"
#include "packet/TruPacket.h"

namespace larynth {

/// The packet that carries one frame of parameters between a front end and the synthesizer.
///
/// ITTSDecKlattParams has no methods and only marks it.
class LarynthParams final
    : public ComObject<TimingFace, IACLClone, TruFace, ITTSDecKlattParams, ItemsFace, VoiceFace,
                       AspirationFace, FricationFace, CascadeFace, ParallelFace, FilterFace>,
      private KlattPacketData {
  public:
    using RecognisedBy = ILarynthParams;
    explicit LarynthParams(IUnknown* outer) noexcept : ComObject(outer) {}

    /// What all faces show.
    KlattPacketData& Values() noexcept { return *this; }

    HRESULT LARYNTH_CALL Copy(IUnknown* pSource) noexcept override;
    HRESULT LARYNTH_CALL Clone(REFIID Id, IUnknown** ppClone) noexcept override;

  protected:
    KlattPacketData& Data() noexcept override { return *this; }
};

}  // namespace larynth
