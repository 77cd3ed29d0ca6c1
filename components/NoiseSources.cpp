// SPDX-License-Identifier: MIT
#include "components/NoiseSources.h"

namespace larynth {

template class NoiseSourceObject<ITTSAspirationSource, ILarynthAspirationParams,
                                 &ILarynthAspirationParams::GetAH>;

template class NoiseSourceObject<ITTSFricationSource, ILarynthFricationParams,
                                 &ILarynthFricationParams::GetAF>;

}  // namespace larynth
