// SPDX-License-Identifier: MIT
#include "components/TTSAspirationSource.h"

namespace larynth {

template class NoiseSourceObject<ITTSAspirationSource, ILarynthAspirationParams,
                                 &ILarynthAspirationParams::GetAH>;

}  // namespace larynth
