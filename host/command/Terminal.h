// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace larynth {

/// A line on standard error; control characters, which may come from a file or its name, are escaped.
void Print(const std::string& line);

/// The same, behind the program's name.
void Say(const std::string& message);

/// A bar on standard error; the line is wiped when the work ends. To be made only where standard error is a
/// terminal.
class ProgressBar {
  public:
    /// Of nothing there is no bar.
    explicit ProgressBar(std::uint64_t total) : total_(total) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// Whether standard error is a terminal.
    static bool IsWanted();

    void Show(std::uint64_t done) noexcept;

  private:
    std::uint64_t total_;
    int shown_ = -1;  // percent
};

}  // namespace larynth
