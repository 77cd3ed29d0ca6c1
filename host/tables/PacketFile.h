// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace larynth {

/// One frame as 41 words of 16 bits.
using PacketWords = std::array<unsigned short, 41>;

/// An utterance as fixed-point packets. The conversion into items sets the length of a frame.
struct PacketFile {
    double sampleFreq = 11025.0;  ///< Hz.
    std::vector<PacketWords> packets;
};

/// Packets from a file's bytes: back to back, 82 bytes each, little-endian. `fileName` serves messages.
/// Raises BadInput for bytes that are no whole number of packets.
std::vector<PacketWords> ParsePackets(std::string_view bytes, const std::string& fileName);

}  // namespace larynth
