// SPDX-License-Identifier: MIT
#include "tests/synth/SynthFixture.h"

namespace larynth::test {
namespace {

class SetVoice : public SynthFixture {
  protected:
    SetVoice() : voice_(new FakeVoice), held_(ComPtr<ITTSVoice>::Adopt(voice_)) {}

    /// Makes the voice bring a source of its own.
    template <class Source>
    Source* Bring() {
        auto* source = new Source;
        voice_->source = ComPtr<ITTSVoicingSource>::Adopt(source);
        return source;
    }

    HRESULT Set() { return attributes->SetVoice(held_.Get(), GUID_NULL); }

    FakeVoice* voice_;
    ComPtr<ITTSVoice> held_;
};

TEST_F(SetVoice, RefusesAnObjectThatIsNoVoice) {
    Initialize();
    Set();
    const auto packet = Packet();
    EXPECT_EQ(attributes->SetVoice(packet.Get(), GUID_NULL), E_FAIL);
    ComPtr<ITTSVoice> current;
    EXPECT_EQ(attributes->GetVoice(current.Id(), current.PutUnknown()), S_OK);
    EXPECT_EQ(current.Get(), held_.Get()) << "nothing changed";
    EXPECT_EQ(attributes->GetVoice(current.Id(), nullptr), E_POINTER);
    EXPECT_EQ(attributes->SetVoice(nullptr, GUID_NULL), S_OK);
    IUnknown* none = packet.Get();
    EXPECT_EQ(attributes->GetVoice(IID_IUnknown, &none), S_FALSE);
    EXPECT_EQ(none, nullptr);
}

TEST_F(SetVoice, TakesPreEmphasisAndLosesItWithTheVoice) {
    Initialize();
    voice_->preEmphasis = 0.5;
    EXPECT_EQ(Set(), S_OK);
    EXPECT_EQ(Render(Packet(2)), (std::vector<short>{530, 265}));
    attributes->SetVoice(nullptr, GUID_NULL);
    EXPECT_EQ(Render(Packet(1)), std::vector<short>{530});
}

TEST_F(SetVoice, KeepsTheShelvesOfTheLastVoiceThatHadSome) {
    Initialize();
    voice_->lowGain = 2.0;
    Set();
    const std::vector<short> shelved = Render(Packet(1));
    EXPECT_NE(shelved, std::vector<short>{530});
    attributes->SetVoice(nullptr, GUID_NULL);
    EXPECT_NE(Render(Packet(1)), std::vector<short>{530}) << "removing the voice keeps the filters";
}

TEST_F(SetVoice, PlugsInTheVoicesSourceWithItsOpenQuotient) {
    Initialize();
    voice_->openQuotient = 0.7;
    auto* wave = Bring<FakeWaveSource>();
    wave->value = 1.0;
    EXPECT_EQ(Set(), S_OK);
    EXPECT_EQ(wave->openQuotient, 0.7);
    EXPECT_EQ(wave->resets, 1);
    EXPECT_EQ(Render(Packet(1)), std::vector<short>{536});  // (1·2 + 10)·3 + 500
}

TEST_F(SetVoice, WithoutASourceKeepsAStandardOneAndReplacesAnyOther) {
    Initialize();
    script = Script{};
    EXPECT_EQ(attributes->SetVoice(nullptr, GUID_NULL), S_OK);
    EXPECT_EQ(Times("CreateInstance") + Times("source.Reset"), 0) << "the standard source stays as it is";

    Bring<FakeWaveSource>();
    Set();
    script = Script{};
    EXPECT_EQ(attributes->SetVoice(nullptr, GUID_NULL), S_OK);
    EXPECT_EQ(Times("CreateInstance"), 1);
    EXPECT_EQ(Times("source.Reset"), 1);
    EXPECT_EQ(attributes->SetVoice(nullptr, GUID_NULL), S_OK);
    EXPECT_EQ(Times("CreateInstance"), 1) << "the new one is a standard source and stays";
}

TEST_F(SetVoice, KeepsAClientsOwnStandardSource) {
    auto* source = new FakeStdSource;
    const auto held = ComPtr<ITTSVoicingSource>::Adopt(source);
    structure->SetVoicingSource(held.Get(), GUID_NULL);
    EXPECT_EQ(Set(), S_OK);
    EXPECT_EQ(source->resets, 0);
    Bring<FakeStdSource>();
    EXPECT_EQ(Set(), S_OK) << "a voice's standard source is of the standard kind too";
    voice_->source.Release();
    script = Script{};
    EXPECT_EQ(Set(), S_OK);
    EXPECT_EQ(Times("CreateInstance"), 0);
}

TEST_F(SetVoice, FailsWhenNoSourceCanBeHad) {
    Initialize();
    Bring<FakeWaveSource>();
    Set();
    voice_->source.Release();
    script = Script{};
    Set();  // makes a standard source
    const int creation = CallNumber("CreateInstance", 1);
    Bring<FakeWaveSource>();
    Set();
    voice_->source.Release();
    script = Script{};
    script.failAt = creation;
    EXPECT_EQ(Set(), E_FAIL);
    ComPtr<ITTSVoice> current;
    attributes->GetVoice(current.Id(), current.PutUnknown());
    EXPECT_EQ(current.Get(), held_.Get()) << "the voice is set all the same";
    ComPtr<IUnknown> output;
    const auto packet = Packet();
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), E_FAIL) << "the role is empty";
}

TEST_F(SetVoice, WiresTheVoicingFilterToTheNewSource) {
    Initialize();
    auto* filter = new FakeVoicingFilter;
    const auto heldFilter = ComPtr<ITTSVoicingSourceFilter>::Adopt(filter);
    LONG number = 0;
    structure->AddComponent(filter, IID_ITTSVoicingSourceFilter, &number);
    auto* wave = Bring<FakeWaveSource>();
    Set();
    EXPECT_EQ(filter->wired, static_cast<ITTSVoicingSource*>(wave));
}

}  // namespace
}  // namespace larynth::test
