// SPDX-License-Identifier: MIT
#include "host/command/RenderInput.h"

namespace larynth {

PacketInput::PacketInput(std::istream& input, std::string fileName, std::optional<double> sampleFreq)
    : input_(input), fileName_(std::move(fileName)), sampleFreq_(sampleFreq.value_or(kDefaultSampleFreq)) {
    LoadModules();
    Require(MakePacket()->GetFrameLen(&length_), "read a packet's frame length");
}

bool PacketInput::Next() {
    constexpr std::size_t kPacketSize = 2 * PacketWords{}.size();
    std::array<char, kPacketSize> bytes;
    input_.read(bytes.data(), bytes.size());
    const auto count = static_cast<std::size_t>(input_.gcount());
    if (count == 0) return false;
    if (count < kPacketSize) {
        throw InputError(fileName_ + ": expected packets of " + std::to_string(kPacketSize) +
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

std::span<const std::int16_t> PacketInput::Render(Synthesizer& synthesizer) const {
    return synthesizer.RenderChunk(MakePacket().Get());
}

ComPtr<ILarynthParams> PacketInput::MakePacket() const {
    ComPtr<ILarynthParams> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    Require(packet->SetSampleFreq(sampleFreq_), "set a packet's sample frequency");
    ComPtr<ITTSTruKlattParams> target;
    Require(target.QueryFrom(packet.Get()), "reach a packet's fixed-point form");
    PacketWords words = words_;
    constexpr LONG kConvert = 1;
    Require(target->SetTruPacket(words.data(), kConvert), "convert a fixed-point packet");
    return packet;
}

Extent ExtentOf(RenderInput& frames) {
    Extent extent;
    while (frames.Next()) {
        ++extent.frames;
        extent.samples += static_cast<std::uint64_t>(frames.Length());
    }
    extent.sampleFreq = frames.SampleFreq();
    return extent;
}

}  // namespace larynth
