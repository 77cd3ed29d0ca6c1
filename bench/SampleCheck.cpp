// SPDX-License-Identifier: MIT
#include "bench/SampleCheck.h"

#include <algorithm>

#include <larynth/Runtime.h>

#include "bench/Rendering.h"

namespace larynth::bench {
namespace {

constexpr unsigned kSeed = 1;  // the straight loop's own

Samples RenderTwice(Path path, const Case& one) {
    LarynthSeedNoise(kSeed);
    Samples samples;
    const auto rendering = MakeRendering(path, one);
    for (int pass = 0; pass < 2; ++pass) {
        rendering->Prepare(&samples);
        rendering->Render(one.count, &samples);
    }
    return samples;
}

std::string Describe(const Samples& expected, const Samples& actual) {
    if (expected.size() != actual.size()) {
        return std::to_string(actual.size()) + " samples instead of " + std::to_string(expected.size());
    }
    const auto place = std::mismatch(expected.begin(), expected.end(), actual.begin());
    return "sample " + std::to_string(place.first - expected.begin()) + " is " +
           std::to_string(*place.second) + " instead of " + std::to_string(*place.first);
}

std::optional<std::string> FindDifference(const Case& one) {
    const Samples expected = RenderTwice(Path::Interfaces, one);
    const bool sounds = std::any_of(expected.begin(), expected.end(), [](int y) { return y != 0; });
    if (!sounds && !one.CountsPackets()) return "case " + one.name + ": there is no sound";
    for (const auto& [path, name] : kPathNames) {
        if (!Applies(path, one)) continue;
        const Samples actual = RenderTwice(path, one);
        if (actual == expected) continue;
        return "case " + one.name + ", path " + std::string(name) + ": " + Describe(expected, actual);
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> FindDifference(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
        if (auto difference = FindDifference(one)) return difference;
    }
    return std::nullopt;
}

}  // namespace larynth::bench
