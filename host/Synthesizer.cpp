// SPDX-License-Identifier: MIT
#include "host/Synthesizer.h"

#include "host/Errors.h"
#include "host/Marker.h"

namespace larynth {
namespace {

ComPtr<ILarynthStruct> StructureOf(IUnknown* synthesizer) {
    ComPtr<ILarynthStruct> structure;
    structure.Query(synthesizer);
    return structure;
}

void PlugInFilterTract(IUnknown* synthesizer) {
    ComPtr<ITTSVocalTract> tract;
    Require(tract.Create(CLSID_TTSVocalTractF), "create the filter tract");
    Require(StructureOf(synthesizer)->SetVocalTract(tract.Get(), IID_ITTSVocalTract),
            "plug in the filter tract");
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

Sound Collect(ITTSObjectList& elements) {
    Sound sound;
    int count = 0;
    Require(elements.GetCount(&count), "count the rendered elements");
    for (int i = 0; i < count; ++i) {
        ComPtr<IUnknown> element;
        Require(elements.GetItem(i, element.Id(), element.Put()), "read a rendered element");
        AppendElement(element.Get(), sound);
    }
    return sound;
}

}  // namespace

Synthesizer::Synthesizer(TractForm form) {
    Require(process_.Create(CLSID_Larynth), "create a synthesizer");
    attributes_.Query(process_.Get());
    if (form == TractForm::Filter) PlugInFilterTract(process_.Get());
    Require(process_->Initialize(nullptr, GUID_NULL), "initialize the synthesizer");
}

void Synthesizer::SetVolume(double volume) { Require(attributes_->SetVolume(volume), "set the volume"); }

void Synthesizer::SetOutputGain(double gain) {
    Require(attributes_->SetOutputGain(gain), "set the output gain");
}

void Synthesizer::SetVoice(IUnknown* voice) {
    Require(attributes_->SetVoice(voice, IID_ITTSVoice), "set the voice");
}

void Synthesizer::SetVoicingSource(IUnknown* source) {
    Require(StructureOf(process_.Get())->SetVoicingSource(source, IID_ITTSVoicingSource),
            "plug in the voicing source");
}

Sound Synthesizer::Render(const FrameStream& stream) {
    ComPtr<ITTSObjectList> elements;
    Require(process_->Calculate(stream.Get(), GUID_NULL, elements.Id(), elements.PutUnknown()),
            "render the utterance");
    return Collect(*elements.Get());
}

}  // namespace larynth
