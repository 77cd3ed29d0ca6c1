// SPDX-License-Identifier: MIT
#include "host/Frames.h"

#include "host/Errors.h"
#include "input/BadInput.h"

namespace larynth {
namespace {

ComPtr<ILarynthParams> NewPacket(double sampleFreq) {
    ComPtr<ILarynthParams> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    Require(packet->SetSampleFreq(sampleFreq), "set a packet's sample frequency");
    return packet;
}

}  // namespace

std::string TableReader::Place() const {
    const TextPosition position = table_.Position();
    return position.file + ':' + std::to_string(position.line);
}

ComPtr<ILarynthParams> TableReader::MakePacket() const {
    ComPtr<ILarynthParams> packet = NewPacket(table_.SampleFreq());
    Require(packet->SetFrameLen(table_.Frame().length), "set a packet's frame length");
    ComPtr<ITTSDoublePacket> items;
    items.Query(packet.Get());
    const std::vector<int>& indices = table_.ItemIndices();
    for (std::size_t i = 0; i < indices.size(); ++i) {
        Require(items->SetItemValue(indices[i], table_.Frame().values[i]), "set a packet's item");
    }
    return packet;
}

PacketReader::PacketReader(std::istream& input, std::string fileName, std::optional<double> sampleFreq)
    : packets_(input, std::move(fileName)), sampleFreq_(sampleFreq.value_or(kDefaultSampleFreq)) {
    Require(MakePacket()->GetFrameLen(&length_), "read a packet's frame length");
}

std::string PacketReader::Place() const {
    return packets_.FileName() + ": packet " + std::to_string(packets_.Number());
}

ComPtr<ILarynthParams> PacketReader::MakePacket() const {
    ComPtr<ILarynthParams> packet = NewPacket(sampleFreq_);
    ComPtr<ITTSTruKlattParams> target;
    target.Query(packet.Get());
    PacketWords words = packets_.Words();
    constexpr LONG kConvert = 1;
    Require(target->SetTruPacket(words.data(), kConvert), "convert a fixed-point packet");
    return packet;
}

Extent ExtentOf(FrameReader& frames) {
    Extent extent;
    while (frames.Next()) {
        ++extent.frames;
        extent.samples += static_cast<std::uint64_t>(frames.Length());
    }
    extent.sampleFreq = frames.SampleFreq();
    return extent;
}

}  // namespace larynth
