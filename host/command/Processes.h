// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <string>

#include "host/command/ExitStatus.h"
#include "host/command/Terminal.h"

namespace larynth {

/// Does pieces of work side by side, each in a process of its own, and counts how they ended. A bar shows how
/// many are done.
class Processes {
  public:
    /// At most `most` at a time, of `works` in all.
    Processes(std::size_t most, std::size_t works) : most_(most), bar_(ProgressBar::IsWanted() ? works : 0) {}

    void Skip() { bar_.Show(++done_); }
    /// `name` is for messages. The process ends with the command. Raises std::system_error.
    void Start(const std::string& name, const std::function<void()>& work);
    void WaitForAll() {
        while (!running_.empty()) WaitForOne();
    }
    std::size_t Count(ExitStatus status) const { return counts_[status]; }

  private:
    void WaitForOne();

    std::size_t most_;
    ProgressBar bar_;
    std::map<int, std::string> running_;  // names by the processes' numbers
    std::size_t done_ = 0;
    std::array<std::size_t, kBadInput + 1> counts_{};
};

}  // namespace larynth
