// SPDX-License-Identifier: MIT
#include "host/Voice.h"

#include "host/Errors.h"
#include "host/StoredProperties.h"

namespace larynth {

ComPtr<ITTSVoicingSource> MakeWaveSource(const Waveform& wave, double sampleFreq) {
    ComPtr<ITTSVoicingSource> source;
    Require(source.Create(CLSID_TTSVoicingSourceWave), "create a wave-table source");
    // Before the waveform: loading it builds the table for the frequency of that moment.
    Require(source->SetSampleFreq(sampleFreq), "set the source's sample frequency");
    StoredProperties("Larynth.TTSVoicingSourceWave", {{"Wave", wave}}).LoadInto(source.Get());
    return source;
}

ComPtr<ITTSVoice> MakeVoice(const VoiceSettings& settings, double sampleFreq) {
    ComPtr<ITTSVoice> voice;
    Require(voice.Create(CLSID_TTSVoice), "create a voice");
    ComPtr<ITTSVoiceSettings> target;
    target.Query(voice.Get());
    Require(target->SetPreEmphasis(settings.preEmphasis), "set the voice's pre-emphasis");
    Require(target->SetOpenQuotient(settings.openQuotient), "set the voice's open quotient");
    const Shelf& low = settings.lowShelf;
    const Shelf& high = settings.highShelf;
    Require(target->SetLowFilter(low.F, low.G, low.P3, low.P4), "set the voice's low shelf");
    Require(target->SetHighFilter(high.F, high.G, high.P3, high.P4), "set the voice's high shelf");
    if (!settings.wave.empty()) {
        const auto source = MakeWaveSource(settings.wave, sampleFreq);
        Require(target->SetVoicingSource(source.Get()), "give the voice its source");
    }
    return voice;
}

}  // namespace larynth
