// SPDX-License-Identifier: MIT
#include "components/TTSVoicingSourceWave.h"
#include "tests/synth/Synth.h"

namespace larynth::test {
namespace {

class Roles : public Synth {
  protected:
    /// A voice; with a source of its own or none.
    HRESULT SetVoice(IUnknown* voiceSource, double preEmphasis = 0.0, double shelfGain = 1.0) {
        settings->SetVoicingSource(voiceSource);
        settings->SetPreEmphasis(preEmphasis);
        settings->SetLowFilter(300.0, shelfGain, 0.75, 0.0);
        script.Restart();
        return attributes->SetVoice(settings.Get(), GUID_NULL);
    }
    HRESULT SetNoVoice() {
        script.Restart();
        return attributes->SetVoice(nullptr, GUID_NULL);
    }

    ComPtr<ITTSVoiceSettings> settings = New<TTSVoice, ITTSVoiceSettings>();
    ComPtr<ITTSVoicingSourceWave> wave = New<TTSVoicingSourceWave, ITTSVoicingSourceWave>();
};

TEST_F(Roles, AreFilledUnderTheirFixedNumbers) {
    const std::tuple<IID, IUnknown*, LONG, const char*> rows[] = {
        {IID_ITTSVoicingSource, source.Unknown(), 1, "E_POINTER"},
        {IID_ITTSAspirationSource, aspiration.Unknown(), 2, "E_FAIL"},
        {IID_ITTSFricationSource, frication.Unknown(), 3, "E_FAIL"},
        {IID_ITTSVocalTract, cascade.Unknown(), 4, "E_FAIL"},
        {IID_ITTSParallelTract, parallel.Unknown(), 5, "E_FAIL"},
        {IID_ITTSVoicingSourceFilter, filter.Unknown(), 6, "E_FAIL"},
    };
    for (const auto& [role, own, roleNumber, forNull] : rows) {
        // The number is written also when the action failed.
        for (const auto& [component, code] : {std::pair<IUnknown*, const char*>(own, "S_OK"),
                                              {nullptr, forNull},
                                              {settings.Get(), "E_NOINTERFACE"}}) {
            LONG number = 0;
            EXPECT_EQ(Code(structure->AddComponent(component, role, &number)), code) << roleNumber;
            EXPECT_EQ(number, roleNumber);
        }
    }
    LONG number = 77;
    EXPECT_EQ(Code(structure->AddComponent(source.Unknown(), IID_ILarynthParams, &number)), "S_OK");
    EXPECT_EQ(number, 77) << "an unknown role does nothing";
}

TEST_F(Roles, OnlyTheVoicingFiltersIsReadBackAndEmptied) {
    ComPtr<ITTSVoicingSourceFilter> found;
    const auto code = [&](LONG number) {
        return Code(structure->GetComponent(number, found.Id(), found.PutUnknown()));
    };
    for (LONG number : {0, 1, 5, 7, -1}) {
        EXPECT_EQ(Code(structure->RemoveComponent(number)), "S_OK");
        EXPECT_EQ(code(number), "E_FAIL") << number;
    }
    EXPECT_EQ(code(6), "S_OK");
    EXPECT_EQ(found.Get(), &filter);
    structure->RemoveComponent(6);
    EXPECT_EQ(code(6), "E_FAIL");
}

TEST_F(Roles, FilledByTheClientAreLeftAloneByInitialize) {
    FakeVoicingSource own(script, 7.0);
    FakeVoicingFilter ownFilter(script, "own filter", 0.0, 1.0);
    structure->SetVoicingSource(own.Unknown(), GUID_NULL);
    LONG number = 0;
    structure->AddComponent(ownFilter.Unknown(), IID_ITTSVoicingSourceFilter, &number);
    process->Initialize(nullptr, GUID_NULL);
    EXPECT_EQ(ownFilter.wired, nullptr) << "a client's filter is the client's to wire";
    EXPECT_EQ(Render(Packet(1)), Shorts{551});  // (7 + 10)·3 + 500
    EXPECT_EQ(script.Times("Reset"), 0);
    structure->SetVoicingSource(own.Unknown(), GUID_NULL);
    EXPECT_EQ(ownFilter.wired, own.Unknown()) << "the next source is wired";
    EXPECT_EQ(Code(structure->SetVoicingSource(settings.Get(), GUID_NULL)), "E_NOINTERFACE");
    structure->RemoveComponent(6);
}

TEST_F(Roles, AVoiceWithoutSourceKeepsAStandardOneAndReplacesAnyOther) {
    FakeVoicingSource other(script);
    FakeStandardSource standard(script);
    const std::tuple<const char*, IUnknown*, bool, long> rows[] = {
        {"the synthesizer's own", nullptr, false, 0},
        {"a client's of no known kind in a standard one's place", other.Unknown(), false, 1},
        {"a client's standard one", standard.Unknown(), false, 0},
        {"a voice's wave table", wave.Get(), true, 1},
        {"a voice's standard one", standard.Unknown(), true, 0}};
    for (const auto& [what, given, isVoices, created] : rows) {
        if (isVoices) SetVoice(given);
        if (!isVoices && given != nullptr) structure->SetVoicingSource(given, GUID_NULL);
        for (const bool voice : {true, false}) {
            EXPECT_EQ(Code(voice ? SetVoice(nullptr) : SetNoVoice()), "S_OK") << what;
            EXPECT_EQ(script.Times("create"), voice ? created : 0) << what;
            EXPECT_EQ(script.Times("Reset"), voice ? created : 0) << what;
        }
    }
    structure->SetVoicingSource(source.Unknown(), GUID_NULL);
}

TEST_F(Roles, AVoicesSourceIsResetAndWired) {
    FakeStandardSource standard(script, 1.0);
    EXPECT_EQ(Code(SetVoice(standard.Unknown())), "S_OK");
    EXPECT_EQ(script.Times("Reset"), 1);
    EXPECT_EQ(filter.wired, standard.Unknown());
    EXPECT_EQ(Render(Packet(1)), Shorts{536});  // (1·2 + 10)·3 + 500

    SetVoice(wave.Get());
    settings->SetVoicingSource(nullptr);
    script.Return("create", E_OUTOFMEMORY);
    EXPECT_EQ(Code(SetNoVoice()), "E_FAIL") << "no source can be had";
    ComPtr<IUnknown> current;
    EXPECT_EQ(Code(attributes->GetVoice(IID_IUnknown, current.Put())), "S_FALSE") << "the voice is gone";
}

TEST_F(Roles, AVoiceSetsPreEmphasisWhichGoesWithItAndShelvesWhichStay) {
    EXPECT_EQ(Code(SetVoice(nullptr, 0.5)), "S_OK");
    EXPECT_EQ(Render(Packet(3)), (Shorts{530, 265, 265}));
    SetNoVoice();
    EXPECT_EQ(Render(Packet(1)), Shorts{530});
    SetVoice(nullptr, 0.0, 2.0);
    SetNoVoice();
    EXPECT_NE(Render(Packet(1)), Shorts{530});
}

}  // namespace
}  // namespace larynth::test
