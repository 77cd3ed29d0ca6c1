// SPDX-License-Identifier: MIT
#include "host/Synthesizer.h"

#include "host/Errors.h"
#include "host/Voice.h"

namespace larynth {

Synthesizer::Synthesizer(const SynthesizerSettings& settings, double sampleFreq) : tract_(settings.tract) {
    Require(process_.Create(CLSID_Larynth), "create a synthesizer");
    if (tract_ == TractForm::Filter) {
        ComPtr<ITTSVocalTract> tract;
        Require(tract.Create(CLSID_TTSVocalTractF), "create the filter tract");
        PlugIn(tract.Get(), tract.Id());
    }
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

ComPtr<ITTSObjectList> Synthesizer::Render(ITTSObjectList& list) {
    ComPtr<ITTSObjectList> elements;
    Require(process_->Calculate(&list, GUID_NULL, elements.Id(), elements.PutUnknown()),
            "render the utterance");
    return elements;
}

}  // namespace larynth
