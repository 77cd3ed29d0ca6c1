// SPDX-License-Identifier: MIT
#include "host/Synthesizer.h"

#include <cmath>

#include "host/Errors.h"
#include "host/Voice.h"

namespace larynth {
namespace {

void ComputeFilter(IUnknown* packet) {
    ComPtr<ILarynthVocalTractFilterParams> filter;
    filter.Query(packet);
    Require(filter->ConvertToFilter(), "convert a packet to the filter form");
}

}  // namespace

Synthesizer::Synthesizer(const SynthesizerSettings& settings, double sampleFreq)
    : tract_(settings.tract),
      outputGain_(settings.outputGain.value_or(1.0)),
      volume_(settings.volume.value_or(1.0)) {
    Require(process_.Create(CLSID_Larynth), "create a synthesizer");
    const bool isFilter = tract_ == TractForm::Filter;
    Require(cascade_.Create(isFilter ? CLSID_TTSVocalTractF : CLSID_TTSVocalTractR),
            "create a cascade tract");
    Require(parallel_.Create(CLSID_TTSParallelTract), "create a parallel tract");
    PlugIn(cascade_.Get(), cascade_.Id());
    PlugIn(parallel_.Get(), parallel_.Id());
    Require(process_->Initialize(nullptr, GUID_NULL), "initialize the synthesizer");
    ComPtr<ILarynthAttributes> attributes;
    attributes.Query(process_.Get());
    if (settings.volume) Require(attributes->SetVolume(*settings.volume), "set the volume");
    if (settings.outputGain) Require(attributes->SetOutputGain(*settings.outputGain), "set the output gain");
    // In this order: a voice brings a source along, and the one that was asked for by name is to sound.
    if (settings.voice) {
        const auto voice = MakeVoice(*settings.voice, sampleFreq);
        Require(attributes->SetVoice(voice.Get(), voice.Id()), "set the voice");
    }
    if (settings.wave) {
        const auto source = MakeWaveSource(*settings.wave, sampleFreq);
        PlugIn(source.Get(), source.Id());
    }
}

void Synthesizer::PlugIn(IUnknown* component, REFIID role) {
    ComPtr<ILarynthStruct> structure;
    structure.Query(process_.Get());
    LONG number = 0;
    Require(structure->AddComponent(component, role, &number), "plug in a component");
}

std::span<const short> Synthesizer::Render(IUnknown* packet) {
    if (tract_ == TractForm::Filter) ComputeFilter(packet);
    Require(process_->Calculate(packet, GUID_NULL, block_.Id(), block_.PutUnknown()), "render a frame");
    const short* samples = nullptr;
    int count = 0;
    Require(block_->GetSamples(&samples, &count), "read a sample block");
    return {samples, static_cast<std::size_t>(count)};
}

bool Synthesizer::IsFinite() const {
    double cascade = 0.0, parallel = 0.0;  // and they stay so in front of the first sample
    cascade_->GetOutputValue(&cascade);
    parallel_->GetOutputValue(&parallel);
    return std::isfinite((cascade + parallel) * outputGain_ * volume_);
}

}  // namespace larynth
