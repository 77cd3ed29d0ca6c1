// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <istream>
#include <string>

namespace larynth {

/// One frame as 41 words of 16 bits.
using PacketWords = std::array<unsigned short, 41>;

/// Reads fixed-point packets back to back, 82 bytes each, little-endian.
class PacketParser {
  public:
    /// `fileName` serves messages. The input must live as long as the parser.
    PacketParser(std::istream& input, std::string fileName) : input_(input), fileName_(std::move(fileName)) {}

    /// Moves to the next packet; false behind the last one, of which there may be none. Raises BadInput for
    /// bytes that are no whole packet.
    bool Next();

    const PacketWords& Words() const noexcept { return words_; }
    std::uint64_t Number() const noexcept { return number_; }  ///< Of the packet, from 1.
    const std::string& FileName() const noexcept { return fileName_; }

  private:
    std::istream& input_;
    std::string fileName_;
    PacketWords words_{};
    std::uint64_t number_ = 0;
};

}  // namespace larynth
