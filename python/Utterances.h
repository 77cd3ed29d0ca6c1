// SPDX-License-Identifier: MIT
/// An utterance on its way to Python: frames as an array, the rest as plain values.
#pragma once

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "python/Arrays.h"

namespace larynth {

using PlainMarkers = std::vector<std::pair<std::size_t, std::string>>;
/// Frames, sample frequency, markers.
using PlainUtterance = std::tuple<pybind11::array, double, PlainMarkers>;

inline PlainUtterance PlainOf(KlattUtterance&& utterance) {
    PlainMarkers markers;
    for (const auto& [frame, text] : utterance.markers) markers.emplace_back(frame, text);
    return {ArrayOf(std::move(utterance.frames), FrameDtype()), utterance.sampleFreq, std::move(markers)};
}

/// What the work gives, done while other threads of the interpreter run.
template <class Work>
auto WithoutLock(Work work) {
    const pybind11::gil_scoped_release unlocked;
    return work();
}

}  // namespace larynth
