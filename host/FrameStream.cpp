// SPDX-License-Identifier: MIT
#include "host/FrameStream.h"

#include <utility>

#include "host/Errors.h"
#include "host/Marker.h"
#include "host/Milestone.h"

namespace larynth {
namespace {

constexpr std::size_t kFramesToMilestone = 64;

ComPtr<ILarynthParams> MakePacket(double sampleFreq) {
    ComPtr<ILarynthParams> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    Require(packet->SetSampleFreq(sampleFreq), "set a packet's sample frequency");
    return packet;
}

ComPtr<ILarynthParams> MakePacket(const FrameTable& table, const Frame& frame) {
    ComPtr<ILarynthParams> packet = MakePacket(table.sampleFreq);
    Require(packet->SetFrameLen(frame.length), "set a packet's frame length");
    ComPtr<ITTSDoublePacket> items;
    items.Query(packet.Get());
    for (std::size_t i = 0; i < table.items.size(); ++i) {
        Require(items->SetItemValue(table.items[i], frame.values[i]), "set a packet's item");
    }
    return packet;
}

ComPtr<ILarynthParams> MakePacket(const PacketFile& file, PacketWords words) {
    ComPtr<ILarynthParams> packet = MakePacket(file.sampleFreq);
    ComPtr<ITTSTruKlattParams> target;
    target.Query(packet.Get());
    constexpr LONG kConvert = 1;
    Require(target->SetTruPacket(words.data(), kConvert), "convert a fixed-point packet");
    return packet;
}

void ComputeFilter(IUnknown* packet) {
    ComPtr<ILarynthVocalTractFilterParams> filter;
    filter.Query(packet);
    Require(filter->ConvertToFilter(), "convert a packet to the filter form");
}

// Adds packets to a stream in the form that the tract takes, and tells how far the rendering has come.
class PacketAdder {
  public:
    PacketAdder(FrameStream& stream, TractForm form, const Progress& progress)
        : stream_(stream), form_(form), progress_(progress) {}

    void Add(IUnknown* packet) {
        if (form_ == TractForm::Filter) ComputeFilter(packet);
        stream_.AddPacket(packet);
        if (++done_ % kFramesToMilestone == 0 && progress_) {
            stream_.AddMilestone([progress = progress_, done = done_] { progress(done); });
        }
    }

  private:
    FrameStream& stream_;
    TractForm form_;
    const Progress& progress_;
    std::size_t done_ = 0;
};

}  // namespace

FrameStream::FrameStream() {
    Require(whole_.Create(CLSID_TTSObjectList), "create an object list");
    open_ = whole_;
}

void FrameStream::AddMarker(const std::string& text) {
    ComPtr<ITTSSyncHolder> holder;
    Require(holder.Create(CLSID_TTSStreamHolder), "create a marker's holder");
    const auto marker = ComPtr<IUtteranceMarker>::Adopt(new Marker(text));
    Require(holder->SetObject(marker.Get()), "attach a marker");
    Require(whole_->Add(holder.Get()), "add a marker to the stream");
    open_.Query(holder.Get());
}

void FrameStream::AddPacket(IUnknown* packet) { Require(open_->Add(packet), "add a frame to the stream"); }

void FrameStream::AddMilestone(std::function<void()> reached) {
    const auto milestone = ComPtr<IUnknown>::Adopt(new Milestone(std::move(reached)));
    Require(open_->Add(milestone.Get()), "add to the stream");
}

FrameStream StreamOf(const FrameTable& table, TractForm form, const Progress& progress) {
    FrameStream stream;
    PacketAdder packets(stream, form, progress);
    for (const Frame& frame : table.frames) {
        if (!frame.marker.empty()) stream.AddMarker(frame.marker);
        packets.Add(MakePacket(table, frame).Get());
    }
    return stream;
}

FrameStream StreamOf(const PacketFile& file, TractForm form, const Progress& progress) {
    FrameStream stream;
    PacketAdder packets(stream, form, progress);
    for (const PacketWords& words : file.packets) packets.Add(MakePacket(file, words).Get());
    return stream;
}

}  // namespace larynth
