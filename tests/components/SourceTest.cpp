// SPDX-License-Identifier: MIT
/// What sources and the voicing filter do beside taking packets.
#include <gtest/gtest.h>

#include <larynth/Runtime.h>

#include "com/Create.h"
#include "components/NoiseSources.h"
#include "components/TTSVocalTractR.h"
#include "components/TTSVoicingSourceFilter.h"
#include "components/TTSVoicingSourceStd.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"
#include "tests/support/Numbers.h"
#include "tests/support/Partners.h"

namespace larynth::test {
namespace {

double Next(auto& source) {
    double sample = 7.0;
    EXPECT_EQ(Code(source->CalculateNext(&sample)), "S_OK");
    return sample;
}

void SetParams(auto& component, std::map<std::string, double> values) {
    Script script;
    EXPECT_EQ(Code(component->SetParams(FakePacket(script, std::move(values)).Unknown(), GUID_NULL)), "S_OK");
}

TEST(NoiseSource, DrawsAFreshValueOfTheProcessForEverySampleAlsoWhileSilent) {
    // Amplitude 2 makes the generator's first draws (41, 18467, 6334, 26500, 19169 of 0 … 32767) these
    // samples.
    const double draws[] = {-1.7277163200622578, 0.22026599068990133, -1.0624252812278208, 1.0695084688333996,
                            0.2944808817214882};
    LarynthSeedNoise(1);
    const auto aspiration = MakeObject<TTSAspirationSource>();
    const auto frication = MakeObject<TTSFricationSource>();
    EXPECT_EQ(Next(aspiration), 0.0) << "before any packet";
    SetParams(aspiration, {{"AH", 2}});
    SetParams(frication, {{"AF", -2}});
    EXPECT_EQ(Next(frication), -draws[1]);
    EXPECT_EQ(Next(aspiration), draws[2]);
    SetParams(aspiration, {});
    EXPECT_EQ(Next(aspiration), 0.0);
    EXPECT_EQ(Next(frication), -draws[4]);
    Script script;
    script.Return("AF", E_FAIL);
    EXPECT_EQ(Code(frication->SetParams(FakePacket(script, {{"AF", 2}}).Unknown(), GUID_NULL)), "S_OK");
    EXPECT_EQ(Next(frication), 0.0) << "an amplitude that is not delivered is silence";
}

TEST(TTSVoicingSourceStd, SettersActOnTheNextSample) {
    constexpr double kK = 232.379000772445;  // 30·sqrt(60), a period of 1 s, half of which is open
    const auto source = MakeObject<TTSVoicingSourceStd>();
    SetParams(source, {{"SampleFreq", 1000}, {"F0", 3}, {"OQ", 0.25}, {"AV", 2}});
    for (const HRESULT hr :
         {source->SetSampleFreq(8.0), source->SetF0(1.0), source->SetOQ(0.5), source->SetVolume(4.0),
          source->SetFL(0.3), source->SetFLT(9.0), source->SetDI(0.5), source->SetTL(30.0)})
        EXPECT_EQ(Code(hr), "S_OK");
    for (int round = 0; round < 2; ++round) {
        EXPECT_DOUBLE_EQ(Next(source), 0.21875 * kK);
        EXPECT_DOUBLE_EQ(Next(source), -0.25 * kK);
        EXPECT_EQ(Code(source->Reset()), "S_OK");
    }
}

struct VoicingFilter : testing::Test {
    Script script;
    FakeVoicingSource source{script};
    Created<TTSVoicingSourceFilter> filter = MakeObject<TTSVoicingSourceFilter>();
};

TEST_F(VoicingFilter, MovesTheSourceInAFrameThatFlutters) {
    const double step = 5000.0;  // 0.05 of flutter time a sample
    SetParams(filter, {{"F0", 100}, {"FL", 0.3}, {"FLT", step}});
    filter->CalculateNext(1.0, nullptr);  // without a source the flutter time stands still
    EXPECT_EQ(Code(filter->SetVoicingSource(&source, GUID_NULL)), "S_OK");
    for (const auto& [F0, FL] : {std::pair(100.0, 0.0), {0.0, 0.3}, {-100.0, 0.3}, {100.0, -0.3}}) {
        SetParams(filter, {{"F0", F0}, {"FL", FL}, {"FLT", step}});
        filter->CalculateNext(1.0, nullptr);
        EXPECT_TRUE(source.frequencies.empty()) << F0 << ", " << FL;
    }
    SetParams(filter, {{"F0", 100}, {"FL", 0.3}, {"FLT", step}});
    for (int i = 0; i < 2; ++i) EXPECT_EQ(Code(filter->CalculateNext(1.0, nullptr)), "S_OK");
    EXPECT_EQ(source.frequencies, (Samples{110.35605906843429, 102.10912854117358}));
    script.Throw("SetF0");
    EXPECT_EQ(Code(filter->CalculateNext(1.0, nullptr)), "E_FAIL");
}

TEST_F(VoicingFilter, HoldsOneSourceAtATime) {
    FakeVoicingSource second(script);
    Fake<IUnknown> noSource(script);
    SetParams(filter, {{"F0", 100}, {"FL", 0.3}});
    for (IUnknown* each : {source.Unknown(), second.Unknown()})
        EXPECT_EQ(Code(filter->SetVoicingSource(each, GUID_NULL)), "S_OK");
    EXPECT_EQ(source.references, 0);
    filter->CalculateNext(1.0, nullptr);
    EXPECT_EQ(second.frequencies, Samples{100.0});
    EXPECT_EQ(Code(filter->SetVoicingSource(&noSource, GUID_NULL)), "E_NOINTERFACE");
    EXPECT_EQ(second.references, 0);
    filter->CalculateNext(1.0, nullptr);
    for (IUnknown* each : {source.Unknown(), static_cast<IUnknown*>(nullptr)})
        EXPECT_EQ(Code(filter->SetVoicingSource(each, GUID_NULL)), "S_OK");
    EXPECT_EQ(source.references, 0);
}

TEST(TTSVocalTractR, SectionsCanBeSetDirectly) {
    const auto tract = MakeObject<TTSVocalTractR>();
    for (const HRESULT outside :
         {tract->SetResonator(-1, 9.0, 0.0, 0.0), tract->SetResonator(6, 9.0, 0.0, 0.0),
          tract->SetAntiResonator(1, 9.0, 0.0, 0.0)})
        EXPECT_EQ(Code(outside), "E_FAIL");
    for (const int index : {0, 5}) EXPECT_EQ(Code(tract->SetResonator(index, 0.5, 0.0, 0.0)), "S_OK");
    EXPECT_EQ(Code(tract->SetAntiResonator(0, 4.0, 8.0, 16.0)), "S_OK");
    for (const double expected : {1.0, 2.0, 4.0, 0.0}) {
        double sample = 7.0;
        tract->CalculateNext(expected == 1.0 ? 1.0 : 0.0, &sample);
        EXPECT_EQ(sample, expected);
    }
}

}  // namespace
}  // namespace larynth::test
