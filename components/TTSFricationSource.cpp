// SPDX-License-Identifier: MIT
#include "components/TTSFricationSource.h"

namespace larynth {

template class NoiseSourceObject<ITTSFricationSource, ILarynthFricationParams,
                                 &ILarynthFricationParams::GetAF>;

}  // namespace larynth
