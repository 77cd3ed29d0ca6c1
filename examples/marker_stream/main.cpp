// SPDX-License-Identifier: MIT
// One list goes in, one list comes out: packets with markers between them become blocks of samples with the
// markers where they came out. Prints when each syllable begins, as a host does that lights up words while it
// plays.
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include <larynth/Larynth.h>
#include <larynth/Speech.h>

/// What the host attaches: any object, which it recognises by an interface of its own when it comes back.
struct LARYNTH_INTERFACE(ISyllable, "a0b5ad9e-6f19-4f0e-8c3b-5a1d1f0b6c52") : IUnknown {
    virtual const std::string& Text() = 0;
};

namespace {

constexpr double kSampleFreq = 11025.0;  // Hz

class Syllable final : public ISyllable {
  public:
    explicit Syllable(std::string text) : text_(std::move(text)) {}
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        if (ppv == nullptr) return E_POINTER;
        const bool isKnown = riid == IID_IUnknown || riid == IID_ISyllable;
        *ppv = isKnown ? static_cast<ISyllable*>(this) : nullptr;
        if (isKnown) AddRef();
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG LARYNTH_CALL AddRef() noexcept override { return ++references_; }
    ULONG LARYNTH_CALL Release() noexcept override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    const std::string& Text() override { return text_; }

  private:
    std::string text_;
    ULONG references_ = 1;
};

/// A holder is a marker in front of the list that it contains.
ComPtr<IUnknown> MakeSyllable(const std::string& text, const std::vector<larynth::KlattFrame>& frames,
                              const larynth::Synthesizer& synthesizer) {
    ComPtr<ITTSSyncHolder> holder;
    larynth::Require(holder.Create(CLSID_TTSStreamHolder), "create a holder");
    const auto syllable = ComPtr<ISyllable>::Adopt(new Syllable(text));
    larynth::Require(holder->SetObject(syllable.Get()), "attach a marker");
    ComPtr<ITTSObjectList> packets;
    packets.Query(holder.Get());
    for (const larynth::KlattFrame& frame : frames) {
        larynth::Require(packets->Add(synthesizer.MakePacket(frame).Get()), "add a packet");
    }
    return ComPtr<IUnknown>::Share(holder.Get());
}

/// Prints the syllables with the times of the samples in front of them; the samples in all.
int PrintTimes(ITTSObjectList& output) {
    int count = 0, samples = 0;
    larynth::Require(output.GetCount(&count), "count the output");
    for (int i = 0; i < count; ++i) {
        ComPtr<ITTSSoundData> block;
        larynth::Require(output.GetItem(i, IID_ITTSSoundData, block.PutUnknown()), "read the output");
        ComPtr<ITTSSyncHolder> sync;
        sync.Query(block.Get());
        ComPtr<ISyllable> syllable;
        larynth::Require(sync->GetObject(IID_ISyllable, syllable.PutUnknown()), "read a marker");
        if (syllable) std::printf("%.3f s  %s\n", samples / kSampleFreq, syllable->Text().c_str());
        const short* values = nullptr;
        int length = 0;
        larynth::Require(block->GetSamples(&values, &length), "read samples");
        samples += length;
    }
    return samples;
}

}  // namespace

int main() {
    const std::vector<larynth::KlattFrame> vowel(20, {.length = 110, .AV = 900, .F1 = 700, .BW1 = 130});
    larynth::Synthesizer synthesizer({.sampleFreq = kSampleFreq});
    ComPtr<ITTSObjectList> utterance;
    larynth::Require(utterance.Create(CLSID_TTSObjectList), "create a list");
    for (const char* text : {"ma", "ri", "na"}) {
        larynth::Require(utterance->Add(MakeSyllable(text, vowel, synthesizer).Get()), "add a syllable");
    }
    ComPtr<ITTSObjectList> sound;
    larynth::Require(
        synthesizer.Process()->Calculate(utterance.Get(), GUID_NULL, sound.Id(), sound.PutUnknown()),
        "render");
    std::printf("%.3f s  end\n", PrintTimes(*sound.Get()) / kSampleFreq);
}
