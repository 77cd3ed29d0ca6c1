// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComException.h>

namespace larynth {

/// A place in a text; both count from 1.
struct ScriptPosition {
    int line;
    int column;
};

/// A registry script that does not follow the format; DISP_E_EXCEPTION outside the module.
class ScriptError final : public Zelvani::ComException {
  public:
    /// `expected` is constant: what should have stood there.
    ScriptError(ScriptPosition where, const char* expected) noexcept
        : ComException(DISP_E_EXCEPTION, "malformed registry script", expected, nullptr, 0), where_(where) {}

    ScriptPosition Where() const noexcept { return where_; }
    const char* Expected() const noexcept { return Message(); }

  private:
    ScriptPosition where_;
};

}  // namespace larynth
