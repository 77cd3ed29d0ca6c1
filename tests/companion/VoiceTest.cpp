// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "tests/companion/Companion.h"
#include "tests/support/Code.h"

namespace {

class FakeSource final : public ITTSVoicingSource {
  public:
    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        const bool answered = riid == IID_IUnknown || riid == IID_ITTSVoicingSource;
        *ppv = answered ? this : nullptr;
        if (answered) AddRef();
        return answered ? S_OK : E_NOINTERFACE;
    }
    ULONG AddRef() override { return ++References; }
    ULONG Release() override { return --References; }
    HRESULT SetSampleFreq(double) override { return S_OK; }
    HRESULT SetF0(double) override { return S_OK; }
    HRESULT SetVolume(double) override { return S_OK; }
    HRESULT Reset() override { return S_OK; }
    HRESULT CalculateNext(double*) override { return S_OK; }
    HRESULT GetOutputValue(double*) override { return S_OK; }
    HRESULT SetParams(IUnknown*, REFIID) override { return S_OK; }

    ULONG References = 1;
};

class Voice : public testing::Test {
  protected:
    Voice() {
        EXPECT_TRUE(Settings.TryQuery(Object.Get()));
        EXPECT_TRUE(Source.TryQuery(Object.Get()));
        EXPECT_TRUE(Filter.TryQuery(Object.Get()));
    }

    ComPtr<ITTSVoice> Object = New<ITTSVoice>(CLSID_TTSVoice);
    ComPtr<ITTSVoiceSettings> Settings;
    ComPtr<ITTSVoiceSourceParams> Source;
    ComPtr<ITTSVoiceFilterParams> Filter;
};

TEST_F(Voice, GivesEachValueInItsOwnSlot) {
    using FilterGetter = HRESULT (ITTSVoiceFilterParams::*)(double*);
    const struct {
        const char* Name;
        FilterGetter Get;
        double New;
        double Set;
    } rows[] = {
        {"low F", &ITTSVoiceFilterParams::GetLowF, 0.0, 300.0},
        {"low P3", &ITTSVoiceFilterParams::GetLowP3, 0.0, 0.75},
        {"low P4", &ITTSVoiceFilterParams::GetLowP4, 0.0, 0.125},
        {"low G", &ITTSVoiceFilterParams::GetLowG, 1.0, 2.0},
        {"high F", &ITTSVoiceFilterParams::GetHighF, 0.0, 3000.0},
        {"high P3", &ITTSVoiceFilterParams::GetHighP3, 0.0, 0.5},
        {"high P4", &ITTSVoiceFilterParams::GetHighP4, 0.0, -0.25},
        {"high G", &ITTSVoiceFilterParams::GetHighG, 1.0, 4.0},
    };
    double value = -1.0;
    for (const auto& row : rows) {
        EXPECT_EQ(Code((Filter.Get()->*row.Get)(&value)), Code(S_OK)) << row.Name;
        EXPECT_EQ(value, row.New) << row.Name;
        EXPECT_EQ(Code((Filter.Get()->*row.Get)(nullptr)), Code(E_POINTER)) << row.Name;
        EXPECT_EQ(Code((Filter.Get()->*row.Get)(ReadOnly<double>())), Code(E_POINTER)) << row.Name;
    }
    EXPECT_EQ(Code(Settings->SetLowFilter(300.0, 2.0, 0.75, 0.125)), Code(S_OK));
    EXPECT_EQ(Code(Settings->SetHighFilter(3000.0, 4.0, 0.5, -0.25)), Code(S_OK));
    for (const auto& row : rows) {
        EXPECT_EQ(Code((Filter.Get()->*row.Get)(&value)), Code(S_OK)) << row.Name;
        EXPECT_EQ(value, row.Set) << row.Name;
    }
}

TEST_F(Voice, GivesTheSourceSettings) {
    double preEmphasis = -1.0, openQuotient = -1.0;
    EXPECT_EQ(Code(Source->GetPreEmphasis(&preEmphasis)), Code(S_OK));
    EXPECT_EQ(Code(Source->GetOpenQuotient(&openQuotient)), Code(S_OK));
    EXPECT_EQ(preEmphasis, 0.0);
    EXPECT_EQ(openQuotient, 0.5);
    EXPECT_EQ(Code(Settings->SetPreEmphasis(0.875)), Code(S_OK));
    EXPECT_EQ(Code(Settings->SetOpenQuotient(0.625)), Code(S_OK));
    EXPECT_EQ(Code(Source->GetPreEmphasis(&preEmphasis)), Code(S_OK));
    EXPECT_EQ(Code(Source->GetOpenQuotient(&openQuotient)), Code(S_OK));
    EXPECT_EQ(preEmphasis, 0.875);
    EXPECT_EQ(openQuotient, 0.625);
    EXPECT_EQ(Code(Source->GetPreEmphasis(nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(Source->GetOpenQuotient(ReadOnly<double>())), Code(E_POINTER));
}

TEST_F(Voice, HandsOutTheSourceThatItHolds) {
    FakeSource source;
    IUnknown* got = &source;
    EXPECT_EQ(Code(Object->GetVoicingSource(IID_ITTSVoicingSource, &got)), Code(S_OK));
    EXPECT_EQ(got, nullptr);
    EXPECT_EQ(Code(Settings->SetVoicingSource(&source)), Code(S_OK));
    EXPECT_EQ(source.References, 2U);
    EXPECT_EQ(Code(Object->GetVoicingSource(IID_ITTSVoicingSource, &got)), Code(S_OK));
    EXPECT_EQ(got, &source);
    EXPECT_EQ(got->Release(), 2U);
    EXPECT_EQ(Code(Object->GetVoicingSource(IID_ITTSVoicingSourceWave, &got)), Code(E_NOINTERFACE));
    EXPECT_EQ(got, nullptr);
    EXPECT_EQ(Code(Object->GetVoicingSource(IID_IUnknown, nullptr)), Code(E_POINTER));

    CountedObject noSource;
    EXPECT_EQ(Code(Settings->SetVoicingSource(&noSource)), Code(E_NOINTERFACE));
    EXPECT_EQ(noSource.References, 1U);
    EXPECT_EQ(source.References, 2U) << "the voice keeps the one it had";
    EXPECT_EQ(Code(Settings->SetVoicingSource(nullptr)), Code(S_OK));
    EXPECT_EQ(source.References, 1U);
}

TEST_F(Voice, ReleasesItsSourceWithItself) {
    FakeSource source;
    Settings->SetVoicingSource(&source);
    Settings.Release();
    Source.Release();
    Filter.Release();
    EXPECT_EQ(Object.Detach()->Release(), 0U);
    EXPECT_EQ(source.References, 1U);
}

TEST_F(Voice, AnswersTheSlotsThatNobodyCalls) {
    EXPECT_EQ(Code(Object->Reserved3()), Code(E_NOTIMPL));
    EXPECT_EQ(Code(Object->Reserved9()), Code(E_NOTIMPL));
    EXPECT_EQ(Code(Source->Reserved3()), Code(E_NOTIMPL));
    EXPECT_EQ(Code(Source->Reserved11()), Code(E_NOTIMPL));
    EXPECT_EQ(Code(Filter->Reserved6()), Code(E_NOTIMPL));
    EXPECT_EQ(Code(Filter->Reserved14()), Code(E_NOTIMPL));
}

}  // namespace
