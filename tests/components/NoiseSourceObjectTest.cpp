// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <larynth/Runtime.h>

#include "com/Create.h"
#include "components/NoiseSources.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"

namespace larynth {
namespace {

double Next(auto& source) {
    double sample = 7.0;
    EXPECT_EQ(Code(source->CalculateNext(&sample)), Code(S_OK));
    return sample;
}

// Amplitude 2 makes the generator's first draws (41, 18467, 6334, 26500, 19169 of 0 … 32767) these samples.
constexpr double kFirst = -1.7277163200622578;
constexpr double kSecond = 0.22026599068990133;
constexpr double kThird = -1.0624252812278208;
constexpr double kFourth = 1.0695084688333996;
constexpr double kFifth = 0.2944808817214882;

TEST(NoiseSourceObject, EverySampleIsAFreshDrawOfTheProcess) {
    LarynthSeedNoise(1);
    FakePacket packet;
    packet.SetAH(2.0);
    packet.SetAF(-2.0);
    const auto aspiration = MakeObject<TTSAspirationSource>();
    const auto frication = MakeObject<TTSFricationSource>();
    EXPECT_EQ(Code(aspiration->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Code(frication->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));

    EXPECT_EQ(Next(aspiration), kFirst);
    EXPECT_EQ(Next(frication), -kSecond);
    double last = 0.0;
    EXPECT_EQ(Code(aspiration->GetOutputValue(&last)), Code(S_OK));
    EXPECT_EQ(last, kFirst);
    EXPECT_EQ(Next(aspiration), kThird);
    EXPECT_EQ(Next(aspiration), kFourth);
    EXPECT_EQ(Next(frication), -kFifth);
}

TEST(NoiseSourceObject, DrawsWhileSilent) {
    LarynthSeedNoise(1);
    FakePacket packet;
    packet.SetAH(2.0);
    const auto source = MakeObject<TTSAspirationSource>();
    EXPECT_EQ(Next(source), 0.0);  // before any packet
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Next(source), kSecond);
    packet.SetAH(0.0);
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Next(source), 0.0);
    packet.SetAH(2.0);
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Next(source), kFourth);
}

TEST(NoiseSourceObject, AnAmplitudeThatIsNotDeliveredIsSilence) {
    FakePacket packet;
    packet.SetAF(2.0);
    const auto source = MakeObject<TTSFricationSource>();
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_NE(Next(source), 0.0);
    packet.Script("AF", E_FAIL);
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Next(source), 0.0);
}

TEST(NoiseSourceObject, AMissingInterfaceKeepsTheAmplitude) {
    LarynthSeedNoise(1);
    FakePacket packet, foreign;
    packet.SetAH(2.0);
    foreign.ScriptQuery(IID_ILarynthAspirationParams, E_NOINTERFACE);
    const auto source = MakeObject<TTSAspirationSource>();
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Code(source->SetParams(foreign.Unknown(), GUID_NULL)), Code(E_FAIL));
    EXPECT_EQ(Next(source), kFirst);
}

}  // namespace
}  // namespace larynth
