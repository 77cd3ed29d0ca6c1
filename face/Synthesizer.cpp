// SPDX-License-Identifier: MIT
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

#include <larynth/Larynth.h>
#include <larynth/Speech.h>

#include "face/Failure.h"
#include "face/Markers.h"
#include "input/Text.h"

namespace larynth {
namespace {

void ComputeFilter(IUnknown* packet) {
    ComPtr<ILarynthVocalTractFilterParams> filter;
    Require(filter.QueryFrom(packet), "reach a packet's filter form");
    Require(filter->ConvertToFilter(), "convert a packet to the filter form");
}

using ItemBits = std::array<std::uint64_t, kFrameItems>;

// The items stand one behind the other, in the order of a packet's indices.
static_assert(std::is_standard_layout_v<KlattFrame> && std::is_trivially_copyable_v<KlattFrame>);
static_assert(sizeof(KlattFrame) == offsetof(KlattFrame, F0) + sizeof(ItemBits));

ItemBits BitsOf(const KlattFrame& frame) {
    ItemBits bits;
    std::memcpy(bits.data(), reinterpret_cast<const char*>(&frame) + offsetof(KlattFrame, F0), sizeof(bits));
    return bits;
}

/// A bit for each item that is not what a new packet has already, and need not cross the interface.
std::uint64_t ChangedItems(const ItemBits& items) {
    static const ItemBits kNewPacket = BitsOf({});
    std::uint64_t changed = 0;
    for (std::size_t i = 0; i < kFrameItems; ++i) {
        changed |= static_cast<std::uint64_t>(items[i] != kNewPacket[i]) << i;
    }
    return changed;
}

double RequireFinite(double value, int index) {
    if (std::isfinite(value)) return value;
    throw InputError(std::string(FrameItems()[static_cast<std::size_t>(index)].name) +
                     ": expected a finite number, found " + ShortestText(value));
}

ComPtr<ILarynthParams> NewPacket(const KlattFrame& frame, double sampleFreq) {
    if (frame.length < 0) {
        throw InputError("length: expected a number of samples from 0, found " +
                         std::to_string(frame.length));
    }
    ComPtr<ILarynthParams> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    Require(packet->SetSampleFreq(sampleFreq), "set a packet's sample frequency");
    Require(packet->SetFrameLen(frame.length), "set a packet's frame length");
    ComPtr<ITTSDoublePacket> items;
    Require(items.QueryFrom(packet.Get()), "reach a packet's items");
    const ItemBits values = BitsOf(frame);
    for (std::uint64_t changed = ChangedItems(values); changed != 0; changed &= changed - 1) {
        const int index = std::countr_zero(changed);
        const auto value = std::bit_cast<double>(values[static_cast<std::size_t>(index)]);
        Require(items->SetItemValue(index, RequireFinite(value, index)), "set a packet's item");
    }
    return packet;
}

}  // namespace

class Synthesizer::Implementation {
  public:
    explicit Implementation(const SynthesizerSettings& settings);

    void PlugIn(IUnknown* component, REFIID role);
    void SetVoice(const std::optional<VoiceSettings>& voice);
    std::span<const std::int16_t> Render(IUnknown* packet);
    bool IsFinite() const;

    double sampleFreq;  // Hz
    ComPtr<IACLIOProcess> process;
    ComPtr<ILarynthAttributes> attributes;
    double volume, outputGain;  // linear

  private:
    TractForm tract_;
    ComPtr<ITTSVocalTract> cascade_;
    ComPtr<ITTSParallelTract> parallel_;
    ComPtr<ITTSSoundData> block_;  // of the last packet
};

Synthesizer::Implementation::Implementation(const SynthesizerSettings& settings)
    : sampleFreq(settings.sampleFreq),
      volume(settings.volume),
      outputGain(settings.outputGain),
      tract_(settings.tract) {
    if (!(sampleFreq > 0.0) || !std::isnormal(sampleFreq)) {
        throw InputError(std::string("sample frequency: expected ") + kSampleFreqRange + ", found " +
                         ShortestText(sampleFreq));
    }
    LoadModules();
    Require(process.Create(CLSID_Larynth), "create a synthesizer");
    const bool isFilter = tract_ == TractForm::Filter;
    Require(cascade_.Create(isFilter ? CLSID_TTSVocalTractF : CLSID_TTSVocalTractR),
            "create a cascade tract");
    Require(parallel_.Create(CLSID_TTSParallelTract), "create a parallel tract");
    PlugIn(cascade_.Get(), cascade_.Id());
    PlugIn(parallel_.Get(), parallel_.Id());
    Require(process->Initialize(nullptr, GUID_NULL), "initialize the synthesizer");
    Require(attributes.QueryFrom(process.Get()), "reach a synthesizer's settings");
    Require(attributes->SetVolume(volume), "set the volume");
    Require(attributes->SetOutputGain(outputGain), "set the output gain");
    // In this order: a voice brings a source along, and the one that was asked for by name is to sound.
    if (settings.voice) SetVoice(settings.voice);
    if (settings.wave) {
        const auto source = MakeWaveSource(*settings.wave, sampleFreq);
        PlugIn(source.Get(), source.Id());
    }
    if (settings.seed) LarynthSeedNoise(*settings.seed);
}

void Synthesizer::Implementation::PlugIn(IUnknown* component, REFIID role) {
    ComPtr<ILarynthStruct> structure;
    Require(structure.QueryFrom(process.Get()), "reach a synthesizer's components");
    LONG number = 0;
    Require(structure->AddComponent(component, role, &number), "plug in a component");
}

void Synthesizer::Implementation::SetVoice(const std::optional<VoiceSettings>& voice) {
    ComPtr<ITTSVoice> made;
    if (voice) made = MakeVoice(*voice, sampleFreq);
    Require(attributes->SetVoice(made.Get(), made.Id()), "set the voice");
}

std::span<const std::int16_t> Synthesizer::Implementation::Render(IUnknown* packet) {
    if (tract_ == TractForm::Filter) ComputeFilter(packet);
    block_.Release();
    ComPtr<ITTSSoundData> block;  // on the stack, where checking an address takes no system call
    Require(process->Calculate(packet, GUID_NULL, block.Id(), block.PutUnknown()), "render a frame");
    block_ = std::move(block);
    const short* samples = nullptr;
    int count = 0;
    Require(block_->GetSamples(&samples, &count), "read a sample block");
    return {samples, static_cast<std::size_t>(count)};
}

bool Synthesizer::Implementation::IsFinite() const {
    double cascade = 0.0, parallel = 0.0;  // and they stay so in front of the first sample
    cascade_->GetOutputValue(&cascade);
    parallel_->GetOutputValue(&parallel);
    return std::isfinite((cascade + parallel) * outputGain * volume);
}

Synthesizer::Synthesizer(const SynthesizerSettings& settings)
    : implementation_(std::make_unique<Implementation>(settings)) {}
Synthesizer::Synthesizer(Synthesizer&&) noexcept = default;
Synthesizer& Synthesizer::operator=(Synthesizer&&) noexcept = default;
Synthesizer::~Synthesizer() = default;

double Synthesizer::SampleFreq() const noexcept { return implementation_->sampleFreq; }

void Synthesizer::SetVolume(double factor) {
    Require(implementation_->attributes->SetVolume(factor), "set the volume");
    implementation_->volume = factor;
}

void Synthesizer::SetOutputGain(double factor) {
    Require(implementation_->attributes->SetOutputGain(factor), "set the output gain");
    implementation_->outputGain = factor;
}

void Synthesizer::SetVoice(const std::optional<VoiceSettings>& voice) { implementation_->SetVoice(voice); }

std::span<const std::int16_t> Synthesizer::RenderChunk(const KlattFrame& frame) {
    return RenderChunk(MakePacket(frame).Get());
}

std::span<const std::int16_t> Synthesizer::RenderChunk(IUnknown* packet) {
    return implementation_->Render(packet);
}

void Synthesizer::Render(std::span<const KlattFrame> frames, const SampleSink& sink) {
    for (std::size_t i = 0; i < frames.size(); ++i) {
        std::span<const std::int16_t> samples;
        InFrame(i, [&] { samples = RenderChunk(frames[i]); });
        sink(samples);
    }
}

std::vector<std::int16_t> Synthesizer::Render(std::span<const KlattFrame> frames) {
    std::vector<std::int16_t> samples;
    Render(frames, [&](std::span<const std::int16_t> chunk) {
        samples.insert(samples.end(), chunk.begin(), chunk.end());
    });
    return samples;
}

std::vector<std::int16_t> Synthesizer::Render(const KlattFrame& frame) {
    return Render(std::span(&frame, 1));
}

Sound Synthesizer::Render(const KlattUtterance& utterance) {
    if (utterance.sampleFreq != SampleFreq()) {
        throw InputError("expected an utterance of the synthesizer's sample frequency " +
                         ShortestText(SampleFreq()) + " Hz, found " + ShortestText(utterance.sampleFreq));
    }
    RequireMarkersInOrder(utterance);
    if (utterance.voice) SetVoice(utterance.voice);
    Sound sound{SampleFreq(), {}, {}};
    std::vector<std::size_t> starts{0};
    Render(utterance.frames, [&](std::span<const std::int16_t> chunk) {
        sound.samples.insert(sound.samples.end(), chunk.begin(), chunk.end());
        starts.push_back(sound.samples.size());
    });
    sound.markers = PlacedMarkers(utterance.markers, starts);
    return sound;
}

bool Synthesizer::IsFinite() const { return implementation_->IsFinite(); }

ComPtr<ILarynthParams> Synthesizer::MakePacket(const KlattFrame& frame) const {
    return NewPacket(frame, SampleFreq());
}

void Synthesizer::PlugIn(IUnknown* component, REFIID role) { implementation_->PlugIn(component, role); }

IACLIOProcess* Synthesizer::Process() const noexcept { return implementation_->process.Get(); }

Sound Render(const KlattUtterance& utterance, SynthesizerSettings settings) {
    settings.sampleFreq = utterance.sampleFreq;
    return Synthesizer(settings).Render(utterance);
}

}  // namespace larynth
