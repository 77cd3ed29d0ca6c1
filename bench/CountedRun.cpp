// SPDX-License-Identifier: MIT
#include "bench/CountedRun.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string_view>

#include "bench/Rendering.h"
#include "input/Text.h"

namespace larynth::bench {

/// Counting is switched on and off by this name, so it must not be inlined.
[[gnu::noinline]] void RenderCounted(Rendering& rendering, std::size_t count) {
    rendering.Render(count, nullptr);
}

namespace {

std::optional<std::string> Option(std::string_view argument, std::string_view name) {
    if (!argument.starts_with(name)) return std::nullopt;
    return std::string(argument.substr(name.size()));
}

std::size_t ParseCount(const std::string& text) {
    const auto count = ParseInteger(text, 1, std::numeric_limits<int>::max());
    if (!count) throw std::runtime_error("expected a number of frames after --frames=, not " + text);
    return static_cast<std::size_t>(*count);
}

const Case& FindCase(const std::string& name, const std::vector<Case>& cases) {
    std::string names;
    for (const Case& one : cases) {
        if (one.name == name) return one;
        names += " " + one.name;
    }
    throw std::runtime_error("expected --case= and one of" + names);
}

Path FindPath(const std::string& wanted, const Case& one) {
    std::string names;
    for (const auto& [path, name] : kPathNames) {
        if (!Applies(path, one)) continue;
        if (name == wanted) return path;
        names += " " + std::string(name);
    }
    throw std::runtime_error("expected --path= and one of" + names);
}

}  // namespace

std::optional<CountedRun> ParseCountedRun(int argc, char** argv) {
    CountedRun run;
    for (int i = 1; i < argc; ++i) {
        if (const auto name = Option(argv[i], "--case=")) run.caseName = *name;
        if (const auto name = Option(argv[i], "--path=")) run.pathName = *name;
        if (const auto frames = Option(argv[i], "--frames=")) run.frames = ParseCount(*frames);
    }
    if (run.frames == 0) return std::nullopt;
    return run;
}

std::size_t MakeCountedRun(const CountedRun& run, const std::vector<Case>& cases) {
    const Case& one = FindCase(run.caseName, cases);
    const auto rendering = MakeRendering(FindPath(run.pathName, one), one);
    std::size_t samples = 0;
    for (std::size_t left = run.frames; left > 0;) {
        const std::size_t count = one.oneList ? one.count : std::min(left, one.count);
        rendering->Prepare(nullptr);
        RenderCounted(*rendering, count);
        for (std::size_t i = 0; i < count; ++i) samples += static_cast<std::size_t>(one.Frame(i).length);
        left -= std::min(left, count);
    }
    return samples;
}

}  // namespace larynth::bench
