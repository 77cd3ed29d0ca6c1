// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "bench/PlainFrame.h"

namespace larynth::bench {

/// How packets reach the synthesizer. A packet keeps the coefficients that it has once computed, so it
/// matters whether it is new.
enum class Feeding {
    /// Every frame is a packet of its own, and all of them convert their sections in the timed part: before
    /// it, each section is written again through its view. The straight loop converts every frame, too.
    Fresh,
    /// One packet again and again, its coefficients computed once. So are those of the straight loop.
    Same,
};

/// Something to render, on every path alike.
struct Case {
    std::string name;
    Feeding feeding = Feeding::Fresh;
    std::vector<PlainFrame> frames;  ///< With Feeding::Same a single one.
    std::size_t count = 0;           ///< Frames in the timed part.
    std::vector<PlainFrame> lead{};  ///< Rendered before each timed part.
    bool oneList = false;            ///< One call of Calculate takes all packets as a list.
    bool filterTract = false;        ///< The cascade as one filter; packets are converted once.
    bool waveSource = false;         ///< The wave-table source.

    const PlainFrame& Frame(std::size_t i) const { return frames[feeding == Feeding::Same ? 0 : i]; }

    /// The straight loop has the standard source and the resonator tract only.
    bool HasStraightLoop() const { return !filterTract && !waveSource; }

    /// What is counted: samples, or packets where there are no samples.
    std::size_t Units() const;
    bool CountsPackets() const { return frames.front().length == 0; }
};

/// All cases in the order of the table. The modules must be loaded.
std::vector<Case> AllCases();

}  // namespace larynth::bench
