// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <larynth/Speech.h>

namespace larynth {

/// InputError unless the markers stand in ascending order and none behind the end.
void RequireMarkersInOrder(const KlattUtterance& utterance);

/// Where markers of frames came out; `starts` are the samples in front of each frame and behind the last one.
std::vector<SoundMarker> PlacedMarkers(std::span<const FrameMarker> markers,
                                       std::span<const std::size_t> starts);

}  // namespace larynth
