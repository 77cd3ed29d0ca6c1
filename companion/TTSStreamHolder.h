// SPDX-License-Identifier: MIT
#pragma once

#include "com/ComObject.h"
#include "companion/AttachedObject.h"
#include "companion/ItemList.h"

namespace larynth {

/// A marker in front of a list: the attached object, which may be a voice, and the content that follows it.
class TTSStreamHolder final : public ComObject<AttachedObject, ItemList> {
  public:
    using ComObject::ComObject;
};

}  // namespace larynth
