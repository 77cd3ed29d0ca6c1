// SPDX-License-Identifier: MIT
#include "bench/ComponentRendering.h"

#include "bench/ForwardingOuter.h"

namespace larynth::bench {
namespace {

void PlugInSpecialParts(ILarynthStruct& structure, const Case& one) {
    if (one.filterTract) {
        ComPtr<ITTSVocalTract> tract;
        Require(tract.Create(CLSID_TTSVocalTractF), "create the filter tract");
        Require(structure.SetVocalTract(tract.Get(), IID_ITTSVocalTract), "plug in the filter tract");
    }
    if (one.waveSource) {
        const auto source = MakeWaveSource({0.1, 0.3, 0.6, 1.0, 0.9, 0.2, -1.4, -1.0, -0.4, -0.3},
                                           one.frames.front().sampleFreq);
        Require(structure.SetVoicingSource(source.Get(), IID_ITTSVoicingSource), "plug in the wave source");
    }
}

ComPtr<IACLIOProcess> MakeSynthesizer(const Case& one, bool throughInterfaces) {
    ComPtr<IACLIOProcess> synthesizer;
    Require(synthesizer.Create(CLSID_Larynth), "create a synthesizer");
    ComPtr<ILarynthStruct> structure;
    structure.Query(synthesizer.Get());
    PlugInSpecialParts(*structure.Get(), one);
    if (throughInterfaces) {
        const auto foreign = ForwardingOuter::Around(CLSID_TTSAspirationSource);
        Require(structure->SetAspirationSource(foreign.Get(), IID_ITTSAspirationSource), "plug in a source");
    }
    Require(synthesizer->Initialize(nullptr, GUID_NULL), "initialize the synthesizer");
    return synthesizer;
}

/// Views of all sections of one kind, from GetResonator or GetAntiResonator.
template <class View, class Tract>
void AddViews(std::vector<ComPtr<View>>& views, Tract& tract, std::size_t count, auto get) {
    for (int i = 0; i < static_cast<int>(count); ++i) {
        ComPtr<View> view;
        Require((tract.*get)(i, view.PutUnknown(), view.Id()), "see a packet's section");
        views.push_back(view);
    }
}

/// Writes a value that every section has already: from then on its coefficients are out of date.
template <class View>
void WriteAgain(View& view) {
    double F = 0.0;
    view.GetFreq(&F);
    view.SetFreq(F);
}

void Append(ITTSSoundData& block, Samples& samples) {
    const short* data = nullptr;
    int count = 0;
    Require(block.GetSamples(&data, &count), "read a block");
    samples.insert(samples.end(), data, data + count);
}

}  // namespace

ComPtr<ILarynthParams> MakePacket(const PlainFrame& frame) {
    ComPtr<ILarynthParams> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    Require(packet->SetSampleFreq(frame.sampleFreq), "set a sample frequency");
    Require(packet->SetFrameLen(frame.length), "set a frame length");
    ComPtr<ITTSDoublePacket> items;
    items.Query(packet.Get());
    for (std::size_t i = 0; i < kItems; ++i) {
        Require(items->SetItemValue(static_cast<int>(i), frame.items[i]), "set an item");
    }
    return packet;
}

ComponentRendering::ComponentRendering(const Case& one, bool throughInterfaces)
    : case_(one), synthesizer_(MakeSynthesizer(one, throughInterfaces)) {
    for (const PlainFrame& frame : one.lead) lead_.push_back(MakePacket(frame));
    for (const PlainFrame& frame : one.frames) AddPacket(frame);
    if (!one.oneList) return;
    Require(list_.Create(CLSID_TTSObjectList), "create a list");
    for (const Packet& packet : packets_) Require(list_->Add(packet.Get()), "add a packet");
}

void ComponentRendering::AddPacket(const PlainFrame& frame) {
    packets_.push_back(MakePacket(frame));
    IUnknown* const packet = packets_.back().Get();
    if (case_.filterTract) {
        ComPtr<ILarynthVocalTractFilterParams> filter;
        filter.Query(packet);
        Require(filter->ConvertToFilter(), "convert a packet to the filter form");
    }
    if (case_.feeding != Feeding::Fresh) return;
    ComPtr<ILarynthVocalTractParams> cascade;
    ComPtr<ILarynthParallelTractParams> parallel;
    cascade.Query(packet);
    parallel.Query(packet);
    AddViews(poles_, *cascade.Get(), kPoles, &ILarynthVocalTractParams::GetResonator);
    AddViews(zeros_, *cascade.Get(), kZeros, &ILarynthVocalTractParams::GetAntiResonator);
    AddViews(poles_, *parallel.Get(), kParallel, &ILarynthParallelTractParams::GetResonator);
}

void ComponentRendering::Prepare(Samples* samples) {
    for (const Packet& packet : lead_) RenderPacket(packet, samples);
    for (const auto& view : poles_) WriteAgain(*view.Get());
    for (const auto& view : zeros_) WriteAgain(*view.Get());
}

void ComponentRendering::Render(std::size_t count, Samples* samples) {
    if (list_) return RenderList(samples);
    const bool same = case_.feeding == Feeding::Same;
    for (std::size_t i = 0; i < count; ++i) RenderPacket(packets_[same ? 0 : i], samples);
}

void ComponentRendering::RenderPacket(const Packet& packet, Samples* samples) {
    ComPtr<ITTSSoundData> block;
    Require(synthesizer_->Calculate(packet.Get(), GUID_NULL, block.Id(), block.PutUnknown()), "render");
    if (samples != nullptr) Append(*block.Get(), *samples);
}

void ComponentRendering::RenderList(Samples* samples) {
    ComPtr<ITTSObjectList> blocks;
    Require(synthesizer_->Calculate(list_.Get(), GUID_NULL, blocks.Id(), blocks.PutUnknown()), "render");
    if (samples == nullptr) return;
    for (std::size_t i = 0; i < packets_.size(); ++i) {
        ComPtr<ITTSSoundData> block;
        Require(blocks->GetItem(static_cast<int>(i), block.Id(), block.PutUnknown()), "read a list");
        Append(*block.Get(), *samples);
    }
}

}  // namespace larynth::bench
