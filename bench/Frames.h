// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/PlainFrame.h"

namespace larynth::bench {

/// What a frame contains beyond a plain vowel.
struct FrameKind {
    bool flutter = false;
    bool everything = false;  ///< Noise, parallel branch, tilt, diplophonia, nasal pair.
};

/// `count` frames of a vowel, about 110 Hz, whose pitch and formants move a little from frame to frame.
std::vector<PlainFrame> VowelFrames(const FrameKind& kind, int length, int count = 1);

/// The frames of a table.
std::vector<PlainFrame> TableFrames(const char* path);

/// The same frames with a flutter of 5 %.
std::vector<PlainFrame> WithFlutter(std::vector<PlainFrame> frames);

/// The same frames with all amplitudes 0.
std::vector<PlainFrame> Silenced(std::vector<PlainFrame> frames);

}  // namespace larynth::bench
