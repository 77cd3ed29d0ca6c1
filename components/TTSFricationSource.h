// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Packet.h>
#include <larynth/Sources.h>

#include "components/NoiseSourceObject.h"

namespace larynth {

extern template class NoiseSourceObject<ITTSFricationSource, ILarynthFricationParams,
                                        &ILarynthFricationParams::GetAF>;

/// Frication noise, the input of the parallel tract. Amplitude: the packet's AF.
class TTSFricationSource final : public NoiseSourceObject<ITTSFricationSource, ILarynthFricationParams,
                                                          &ILarynthFricationParams::GetAF> {
  public:
    using RecognisedBy = ITTSFricationSource;
    using NoiseSourceObject::NoiseSourceObject;
};

}  // namespace larynth
