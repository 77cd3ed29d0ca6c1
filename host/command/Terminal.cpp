// SPDX-License-Identifier: MIT
#include "host/command/Terminal.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

#include "input/Text.h"

namespace larynth {
namespace {

constexpr char kWipe[] = "\r\x1b[K";  // the line, a bar's perhaps
constexpr int kWidth = 40;
constexpr char kFull[] = "########################################";
static_assert(sizeof(kFull) == kWidth + 1);

}  // namespace

void Print(const std::string& line) {
    std::fprintf(stderr, "%s%s\n", ProgressBar::IsWanted() ? kWipe : "", Printable(line).c_str());
}

void Say(const std::string& message) { Print("larynth: " + message); }

bool ProgressBar::IsWanted() { return isatty(STDERR_FILENO) == 1; }

ProgressBar::~ProgressBar() {
    if (shown_ >= 0) std::fputs(kWipe, stderr);
}

void ProgressBar::Show(std::uint64_t done) noexcept {
    if (total_ == 0) return;
    const int percent = static_cast<int>(100 * std::min(done, total_) / total_);
    if (percent == shown_) return;
    shown_ = percent;
    std::fprintf(stderr, "\r[%-*.*s] %3d %%", kWidth, kWidth * percent / 100, kFull, percent);
}

}  // namespace larynth
