// SPDX-License-Identifier: MIT
#include "host/Rendering.h"

#include <utility>

#include "host/ClientObject.h"
#include "host/Errors.h"

/// A text at a position of an utterance.
struct LARYNTH_INTERFACE(IUtteranceMarker, "4fb9bd62-1c5e-4a7e-93a1-d3a7bd17b0c5") : IUnknown {
    /// UTF-8, ended by a zero byte; valid as long as the marker. E_POINTER for null.
    virtual HRESULT LARYNTH_CALL GetText(LPCSTR* psText /*out*/) = 0;
};

namespace larynth {
namespace {

constexpr std::size_t kFramesOfChunk = 64;

/// Goes into the list on a holder, and comes back on a sync element.
class Marker final : public ClientObject<IUtteranceMarker> {
  public:
    explicit Marker(std::string text) : text_(std::move(text)) {}

    HRESULT LARYNTH_CALL GetText(LPCSTR* psText) noexcept override {
        if (psText == nullptr) return E_POINTER;
        *psText = text_.c_str();
        return S_OK;
    }

  private:
    std::string text_;
};

ComPtr<ILarynthParams> MakePacket(double sampleFreq) {
    ComPtr<ILarynthParams> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    Require(packet->SetSampleFreq(sampleFreq), "set a packet's sample frequency");
    return packet;
}

ComPtr<ILarynthParams> MakePacket(const FrameTable& table, const TableFrame& frame) {
    ComPtr<ILarynthParams> packet = MakePacket(table.sampleFreq);
    Require(packet->SetFrameLen(frame.length), "set a packet's frame length");
    ComPtr<ITTSDoublePacket> items;
    items.Query(packet.Get());
    for (std::size_t i = 0; i < table.itemIndices.size(); ++i) {
        Require(items->SetItemValue(table.itemIndices[i], frame.values[i]), "set a packet's item");
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

void AppendSamples(ITTSSoundData& block, Sound& sound) {
    const short* samples = nullptr;
    int count = 0;
    Require(block.GetSamples(&samples, &count), "read a sample block");
    sound.samples.insert(sound.samples.end(), samples, samples + count);
}

// A sync element is a block without samples that carries a marker; a block of a packet carries nothing.
void AppendElement(IUnknown* element, Sound& sound) {
    ComPtr<ITTSSyncHolder> holder;
    ComPtr<IUtteranceMarker> marker;
    if (holder.TryQuery(element) && SUCCEEDED(holder->GetObject(marker.Id(), marker.PutUnknown())) &&
        marker) {
        LPCSTR text = nullptr;
        Require(marker->GetText(&text), "read a marker");
        sound.labels.push_back({sound.samples.size(), text});
    }
    ComPtr<ITTSSoundData> block;
    if (block.TryQuery(element)) AppendSamples(*block.Get(), sound);
}

void AddFrames(const FrameTable& table, Rendering& rendering) {
    for (const TableFrame& frame : table.frames) {
        if (!frame.marker.empty()) rendering.AddMarker(frame.marker);
        rendering.AddPacket(MakePacket(table, frame).Get());
    }
}

void AddFrames(const PacketFile& file, Rendering& rendering) {
    for (const PacketWords& words : file.packets) rendering.AddPacket(MakePacket(file, words).Get());
}

}  // namespace

double SampleFreqOf(const Utterance& utterance) {
    return std::visit([](const auto& form) { return form.sampleFreq; }, utterance);
}

std::size_t FrameCountOf(const Utterance& utterance) {
    const auto* const table = std::get_if<FrameTable>(&utterance);
    return table != nullptr ? table->frames.size() : std::get<PacketFile>(utterance).packets.size();
}

Rendering::Rendering(Synthesizer& synthesizer, Progress progress)
    : synthesizer_(synthesizer), progress_(std::move(progress)) {
    StartChunk();
}

void Rendering::AddMarker(const std::string& text) {
    ComPtr<ITTSSyncHolder> holder;
    Require(holder.Create(CLSID_TTSStreamHolder), "create a marker's holder");
    const auto marker = ComPtr<IUtteranceMarker>::Adopt(new Marker(text));
    Require(holder->SetObject(marker.Get()), "attach a marker");
    Require(chunk_->Add(holder.Get()), "add a marker to the stream");
}

void Rendering::AddPacket(IUnknown* packet) {
    if (synthesizer_.Tract() == TractForm::Filter) ComputeFilter(packet);
    Require(chunk_->Add(packet), "add a frame to the stream");
    if (++frames_ % kFramesOfChunk != 0) return;
    RenderChunk();
    StartChunk();
    if (progress_) progress_(frames_);
}

Sound Rendering::Finish() {
    RenderChunk();
    return std::move(sound_);
}

void Rendering::StartChunk() { Require(chunk_.Create(CLSID_TTSObjectList), "create an object list"); }

void Rendering::RenderChunk() {
    const ComPtr<ITTSObjectList> elements = synthesizer_.Render(*chunk_.Get());
    int count = 0;
    Require(elements->GetCount(&count), "count the rendered elements");
    for (int i = 0; i < count; ++i) {
        ComPtr<IUnknown> element;
        Require(elements->GetItem(i, element.Id(), element.Put()), "read a rendered element");
        AppendElement(element.Get(), sound_);
    }
}

Sound Render(const Utterance& utterance, Synthesizer& synthesizer, const Progress& progress) {
    Rendering rendering(synthesizer, progress);
    std::visit([&](const auto& form) { AddFrames(form, rendering); }, utterance);
    return rendering.Finish();
}

}  // namespace larynth
