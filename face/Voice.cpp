// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstring>
#include <limits>

#include <larynth/Properties.h>
#include <larynth/Speech.h>

#include "face/ClientObject.h"

namespace larynth {
namespace {

/// Tells a source which sample of a waveform is meant: one dimension, without a name of its own.
class WaveformIndex final : public ClientObject<IACLPropertyIndex> {
  public:
    explicit WaveformIndex(int size) : size_(size) {}

    HRESULT LARYNTH_CALL SetDimensionCount(int nCount) noexcept override {
        return nCount == 1 ? S_OK : E_FAIL;
    }
    HRESULT LARYNTH_CALL GetDimensionCount(int* pnCount) noexcept override { return Give(0, 1, pnCount); }
    HRESULT LARYNTH_CALL SetSize(int, int) noexcept override { return E_FAIL; }
    HRESULT LARYNTH_CALL SetIndex(int nDimension, int nIndex) noexcept override {
        if (nDimension != 0) return E_FAIL;
        index_ = nIndex;
        return S_OK;
    }
    HRESULT LARYNTH_CALL SetName(int, LPCSTR) noexcept override { return E_FAIL; }
    HRESULT LARYNTH_CALL GetSize(int nDimension, int* pnSize) noexcept override {
        return Give(nDimension, size_, pnSize);
    }
    HRESULT LARYNTH_CALL GetIndex(int nDimension, int* pnIndex) noexcept override {
        return Give(nDimension, index_, pnIndex);
    }
    HRESULT LARYNTH_CALL GetNameLength(int nDimension, int* pnLength) noexcept override {
        return Give(nDimension, sizeof(kName) - 1, pnLength);
    }
    HRESULT LARYNTH_CALL GetName(int nDimension, LPSTR sBuffer) noexcept override {
        if (nDimension != 0) return E_FAIL;
        if (sBuffer == nullptr) return E_POINTER;
        std::memcpy(sBuffer, kName, sizeof(kName));
        return S_OK;
    }

  private:
    static constexpr char kName[] = " , ";

    static HRESULT Give(int dimension, int value, int* target) noexcept {
        if (target == nullptr) return E_POINTER;
        if (dimension != 0) return E_FAIL;
        *target = value;
        return S_OK;
    }

    int size_;
    int index_ = 0;
};

/// Gives a wave-table source its waveform, sample by sample, as a container restores a stored property.
class StoredWaveform final : public ClientObject<IACLPropertySource> {
  public:
    explicit StoredWaveform(const Waveform& wave) : wave_(wave) {}

    HRESULT LARYNTH_CALL PushProperties(IACLPersistProperties* pTarget) noexcept override {
        // More than a source can take, where a waveform has more than can be said.
        constexpr std::size_t kMost = std::numeric_limits<int>::max();
        const int size = static_cast<int>(std::min(wave_.size(), kMost));
        auto* const index = new (std::nothrow) WaveformIndex(size);
        if (index == nullptr) return E_OUTOFMEMORY;
        const auto held = ComPtr<IACLPropertyIndex>::Adopt(index);
        HRESULT hr = S_OK;
        for (int i = 0; i < size && SUCCEEDED(hr); ++i) {
            index->SetIndex(0, i);
            hr = pTarget->SetPropertyValue(pTarget, "Wave", 0, &wave_[static_cast<std::size_t>(i)],
                                           kPropertyTypeDouble, 0, 0, index);
        }
        return hr;
    }

  private:
    const Waveform& wave_;
};

}  // namespace

ComPtr<ITTSVoicingSource> MakeWaveSource(const Waveform& wave, double sampleFreq) {
    LoadModules();
    ComPtr<ITTSVoicingSource> source;
    Require(source.Create(CLSID_TTSVoicingSourceWave), "create a wave-table source");
    // Before the waveform: loading it builds the table for the frequency of that moment.
    Require(source->SetSampleFreq(sampleFreq), "set the source's sample frequency");
    ComPtr<IACLPersistProperties> properties;
    Require(properties.QueryFrom(source.Get()), "reach an object's properties");
    const auto stored = ComPtr<IACLPropertySource>::Adopt(new StoredWaveform(wave));
    Require(properties->LoadProperties(stored.Get()), "load an object's properties");
    return source;
}

ComPtr<ITTSVoice> MakeVoice(const VoiceSettings& settings, double sampleFreq) {
    LoadModules();
    ComPtr<ITTSVoice> voice;
    Require(voice.Create(CLSID_TTSVoice), "create a voice");
    ComPtr<ITTSVoiceSettings> target;
    Require(target.QueryFrom(voice.Get()), "reach a voice's settings");
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
