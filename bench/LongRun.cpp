// SPDX-License-Identifier: MIT
#include "bench/LongRun.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

#include "bench/Rendering.h"
#include "input/Text.h"

namespace larynth::bench {

namespace {

double ResidentMebibytes() {
    std::ifstream file("/proc/self/statm");
    long size = 0, resident = 0;
    file >> size >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 0x1p20;
}

void RunFor(long long samples, const Case& one) {
    using Clock = std::chrono::steady_clock;
    const auto rendering = MakeRendering(Path::Vectors, one);
    rendering->Prepare(nullptr);
    const auto length = static_cast<long long>(one.Frame(0).length);
    for (int tenth = 1; tenth <= 10; ++tenth) {
        const auto begin = Clock::now();
        long long made = 0;
        for (; made < samples / 10; made += length * static_cast<long long>(one.count)) {
            rendering->Render(one.count, nullptr);
        }
        const std::chrono::duration<double, std::nano> spent = Clock::now() - begin;
        std::printf("| %s | %d | %.2f | %.1f |\n", one.name.c_str(), tenth,
                    spent.count() / static_cast<double>(std::max(made, 1LL)), ResidentMebibytes());
    }
}

}  // namespace

std::optional<long long> ParseLongRun(int argc, char** argv) {
    constexpr std::string_view kOption = "--long=";
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (!argument.starts_with(kOption)) continue;
        const std::string text(argument.substr(kOption.size()));
        const auto samples = ParseInteger(text, 10, std::numeric_limits<long long>::max());
        if (!samples) throw std::runtime_error("expected a number of samples after --long=, not " + text);
        return *samples;
    }
    return std::nullopt;
}

void MakeLongRun(long long samples, const std::vector<Case>& cases) {
    std::puts("| case | tenth | ns a sample | MiB |\n| --- | --: | --: | --: |");
    for (const Case& one : cases) {
        if (one.name == "same_everything_1000" || one.name == "everything_flutter_1000") RunFor(samples, one);
    }
}

}  // namespace larynth::bench
