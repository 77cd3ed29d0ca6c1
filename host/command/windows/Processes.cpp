// SPDX-License-Identifier: MIT
// A process has no copies here: one piece of work after the other, each with the noise that a new process
// begins with.
#include "host/command/Processes.h"

#include <larynth/Runtime.h>

namespace larynth {

void Processes::Start(const std::string&, const std::function<void()>& work) {
    LarynthSeedNoise(1);
    ++counts_[StatusOf(work)];
    bar_.Show(++done_);
}

void Processes::WaitForOne() {}

}  // namespace larynth
