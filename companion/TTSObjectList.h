// SPDX-License-Identifier: MIT
#pragma once

#include "com/ComObject.h"
#include "companion/ItemList.h"

namespace larynth {

/// A list of objects: packets on their way in, sample blocks and markers on their way out. Starts empty.
class TTSObjectList final : public ComObject<ItemList> {
  public:
    using ComObject::ComObject;
};

}  // namespace larynth
