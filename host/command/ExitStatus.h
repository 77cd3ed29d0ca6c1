// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace larynth {

/// What a run of the command tells its caller.
enum ExitStatus { kDone = 0, kFailed = 1, kBadInput = 2 };

/// Does `work`. What it raises becomes a line on standard error and a status.
ExitStatus StatusOf(const std::function<void()>& work);

}  // namespace larynth
