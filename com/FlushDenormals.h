// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ModuleRuntime.h>

namespace larynth {

/// While it lives, this thread's arithmetic takes denormal numbers for 0. Sections that decay in silence
/// reach them after seconds, and then cost fifty times as much.
class FlushDenormals {
  public:
    FlushDenormals() noexcept : modeBefore_(LarynthFlushDenormals()) {}
    ~FlushDenormals() { LarynthSetArithmeticMode(modeBefore_); }
    FlushDenormals(const FlushDenormals&) = delete;
    FlushDenormals& operator=(const FlushDenormals&) = delete;

  private:
    unsigned modeBefore_;
};

}  // namespace larynth
