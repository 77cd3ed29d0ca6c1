// SPDX-License-Identifier: MIT
#include "host/tables/PacketFile.h"

#include "host/Errors.h"

namespace larynth {
namespace {

constexpr std::size_t kPacketSize = 2 * PacketWords{}.size();

PacketWords WordsOf(std::string_view packet) {
    PacketWords words;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const unsigned low = static_cast<unsigned char>(packet[2 * i]);
        const unsigned high = static_cast<unsigned char>(packet[2 * i + 1]);
        words[i] = static_cast<unsigned short>(high << 8 | low);
    }
    return words;
}

}  // namespace

std::vector<PacketWords> ParsePackets(std::string_view bytes, const std::string& fileName) {
    if (bytes.size() % kPacketSize != 0) {
        throw BadInput(fileName + ": expected packets of " + std::to_string(kPacketSize) +
                       " bytes each, found " + std::to_string(bytes.size()) + " bytes");
    }
    std::vector<PacketWords> packets;
    packets.reserve(bytes.size() / kPacketSize);
    for (std::size_t i = 0; i < bytes.size(); i += kPacketSize)
        packets.push_back(WordsOf(bytes.substr(i, kPacketSize)));
    return packets;
}

}  // namespace larynth
