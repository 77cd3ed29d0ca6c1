// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

namespace larynth {

class KlattPacketData;

/// One frame as 41 words; each is read as a signed integer in two's complement.
using TruWords = std::array<std::uint16_t, 41>;

/// Fills a packet from the words: resonators in coefficient form, amplitudes as fractions of full scale,
/// pitch as a period of a 22050 Hz clock. The packet's sample time is not changed.
void ConvertTruWords(const TruWords& words, KlattPacketData& packet) noexcept;

}  // namespace larynth
