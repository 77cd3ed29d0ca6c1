// SPDX-License-Identifier: MIT
#include "components/TTSFricationSource.h"

namespace larynth {

template class NoiseSourceObject<ITTSFricationSource, ILarynthFricationParams,
                                 &ILarynthFricationParams::GetAF, ScalarItem::AF>;

}  // namespace larynth
