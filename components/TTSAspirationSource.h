// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Packet.h>
#include <larynth/Sources.h>

#include "components/NoiseSourceObject.h"

namespace larynth {

extern template class NoiseSourceObject<ITTSAspirationSource, ILarynthAspirationParams,
                                        &ILarynthAspirationParams::GetAH>;

/// Aspiration noise, mixed with the voicing in front of the cascade. Amplitude: the packet's AH.
class TTSAspirationSource final : public NoiseSourceObject<ITTSAspirationSource, ILarynthAspirationParams,
                                                           &ILarynthAspirationParams::GetAH> {
  public:
    using RecognisedBy = ITTSAspirationSource;
    using NoiseSourceObject::NoiseSourceObject;
};

}  // namespace larynth
