// SPDX-License-Identifier: MIT
#include "face/Markers.h"

#include <algorithm>
#include <string>

namespace larynth {

void RequireMarkersInOrder(const KlattUtterance& utterance) {
    const auto& markers = utterance.markers;
    const bool areAscending = std::ranges::is_sorted(markers, {}, &FrameMarker::frame);
    if (areAscending && (markers.empty() || markers.back().frame <= utterance.frames.size())) return;
    throw InputError("expected markers in ascending order, up to the end, frame " +
                     std::to_string(utterance.frames.size()));
}

std::vector<SoundMarker> PlacedMarkers(std::span<const FrameMarker> markers,
                                       std::span<const std::size_t> starts) {
    std::vector<SoundMarker> placed;
    placed.reserve(markers.size());
    for (const FrameMarker& marker : markers) placed.push_back({starts[marker.frame], marker.text});
    return placed;
}

}  // namespace larynth
