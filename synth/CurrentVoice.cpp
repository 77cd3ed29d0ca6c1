// SPDX-License-Identifier: MIT
#include "synth/CurrentVoice.h"

#include "com/Boundary.h"
#include "synth/OutputStage.h"
#include "synth/Roles.h"
#include "synth/SyncElement.h"

namespace larynth {

HRESULT CurrentVoice::Set(IUnknown* voice) {
    HRESULT result = S_OK;
    ComPtr<ITTSVoice> newVoice;
    if (voice != nullptr) {
        result = newVoice.QueryFrom(voice);
        if (!newVoice) return E_FAIL;
    }
    // The old voice goes before the new one is asked for anything, as hosts may observe and the contract
    // says: a failure from here on leaves what was taken of the new one.
    voice_ = newVoice;
    output_.preEmphasis = 0.0;

    ComPtr<ITTSVoicingSource> source;
    ComPtr<ITTSVoiceSourceParams> sourceSettings;
    if (newVoice) {
        newVoice->GetVoicingSource(IID_ITTSVoicingSource, source.PutUnknown());
        sourceSettings.TryQuery(newVoice.Get());
        ReadSettings(newVoice.Get(), sourceSettings.Get());
    }
    if (source) {
        roles_.PlugVoiceSource(std::move(source), sourceSettings.Get());
    } else {
        roles_.KeepOrMakeStandardSource();
    }
    if (!roles_.voicingSource) return E_FAIL;
    roles_.WireVoicingFilter();
    pending_ = true;
    return result;
}

void CurrentVoice::ReadSettings(ITTSVoice* voice, ITTSVoiceSourceParams* sourceSettings) {
    // The values pass through locals: an out-pointer into the stack is checked at no cost.
    if (sourceSettings != nullptr) {
        double preEmphasis = output_.preEmphasis;
        sourceSettings->GetPreEmphasis(&preEmphasis);
        output_.preEmphasis = preEmphasis;
    }
    ComPtr<ITTSVoiceFilterParams> filters;
    if (!filters.TryQuery(voice)) return;
    ShelfSettings low = output_.LowShelf(), high = output_.HighShelf();
    filters->GetLowF(&low.F);
    filters->GetLowG(&low.G);
    filters->GetLowP3(&low.P3);
    filters->GetLowP4(&low.P4);
    filters->GetHighF(&high.F);
    filters->GetHighG(&high.G);
    filters->GetHighP3(&high.P3);
    filters->GetHighP4(&high.P4);
    output_.SetShelves(low, high);
}

void CurrentVoice::AdoptFrom(IUnknown* object) {
    const HRESULT adopted = Guarded([&]() -> HRESULT {
        ComPtr<ITTSVoice> voice;
        return voice.TryQuery(object) ? Set(voice.Get()) : E_NOINTERFACE;
    });
    if (SUCCEEDED(adopted)) pending_ = false;
}

void CurrentVoice::Announce(ITTSObjectList& output) noexcept {
    const auto voice = voice_;  // which may be replaced meanwhile
    if (!pending_ || !voice) return;
    if (SUCCEEDED(Guarded([&] { return AddSyncElement(output, voice.Get()); }))) pending_ = false;
}

}  // namespace larynth
