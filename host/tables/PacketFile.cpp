// SPDX-License-Identifier: MIT
#include "host/tables/PacketFile.h"

#include "input/BadInput.h"

namespace larynth {

bool PacketParser::Next() {
    constexpr std::size_t kPacketSize = 2 * PacketWords{}.size();
    std::array<char, kPacketSize> bytes;
    input_.read(bytes.data(), bytes.size());
    const auto count = static_cast<std::size_t>(input_.gcount());
    if (count == 0) return false;
    if (count < kPacketSize) {
        throw BadInput(fileName_ + ": expected packets of " + std::to_string(kPacketSize) +
                       " bytes each, found " + std::to_string(number_ * kPacketSize + count) + " bytes");
    }
    for (std::size_t i = 0; i < words_.size(); ++i) {
        const unsigned low = static_cast<unsigned char>(bytes[2 * i]);
        const unsigned high = static_cast<unsigned char>(bytes[2 * i + 1]);
        words_[i] = static_cast<unsigned short>(high << 8 | low);
    }
    ++number_;
    return true;
}

}  // namespace larynth
