// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace larynth {

/// A bar on standard error; the line is wiped when the work ends. To be made only where standard error is a
/// terminal.
class ProgressBar {
  public:
    explicit ProgressBar(std::size_t total) : total_(total) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// Whether standard error is a terminal.
    static bool IsWanted();

    void Show(std::size_t done) noexcept;

  private:
    std::size_t total_;
    int shown_ = -1;  // percent
};

}  // namespace larynth
