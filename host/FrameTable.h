// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace larynth {

/// One frame of a table.
struct Frame {
    int length;                  ///< Samples.
    std::string marker;          ///< UTF-8; empty: no marker in front of this frame.
    std::vector<double> values;  ///< One for each of the table's items; repetition is resolved.
};

/// An utterance as a table of frames.
struct FrameTable {
    double sampleFreq = 11025.0;  ///< Hz.
    std::vector<int> items;       ///< Packet index of each value column.
    std::vector<Frame> frames;
};

}  // namespace larynth
