// SPDX-License-Identifier: MIT
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "com/Create.h"
#include "components/TTSVoicingSourceStd.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"

namespace larynth {
namespace {

using Source = Created<TTSVoicingSourceStd>;
using Samples = std::vector<double>;

/// 15·sqrt(60): the pulse factor K for a period of 1 s and an open quotient of 0.5, analytically.
constexpr double kK = 116.1895003862225;

/// Eight samples a period of 1 s. In units of kK a period starts 0.3125, 0.25, −0.1875, −1 and is then 0.
void Fill(FakePacket& packet) {
    packet.SetSampleFreq(8.0);
    packet.SetF0(1.0);
    packet.SetOQ(0.5);
    packet.SetAV(2.0);
}

Source SourceOf(FakePacket& packet) {
    Source source = MakeObject<TTSVoicingSourceStd>();
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    return source;
}

void ExpectSamples(const Source& source, const Samples& expected, double unit = kK) {
    for (const double y : expected) {
        double sample = 7.0;
        EXPECT_EQ(Code(source->CalculateNext(&sample)), Code(S_OK));
        EXPECT_DOUBLE_EQ(sample, y * unit);
    }
}

TEST(TTSVoicingSourceStd, SoundsAsThePacketSays) {
    FakePacket packet;
    Fill(packet);
    const Source source = SourceOf(packet);
    ExpectSamples(source, {0.3125, 0.25, -0.1875, -1.0, 0.0, 0.0, 0.0, 0.0});  // the last at exactly 1 s
    ExpectSamples(source, {0.0, 0.3125});                                      // a period starts at 0

    packet.SetDI(0.5);
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    ExpectSamples(source, {-0.25, -0.1875, -1.0});  // the phase runs on
}

TEST(TTSVoicingSourceStd, SettersActOnTheNextSample) {
    const struct {
        const char* name;
        std::function<HRESULT(const Source&)> set;
        Samples samples;
        double unit = kK;
    } rows[] = {
        {"SetTL(30)", [](const Source& s) { return s->SetTL(30.0); }, {0.3125, 0.25}},
        {"SetFL(0.3)", [](const Source& s) { return s->SetFL(0.3); }, {0.3125, 0.25}},
        {"SetFLT(10)", [](const Source& s) { return s->SetFLT(10.0); }, {0.3125, 0.25}},
        {"SetVolume(4)", [](const Source& s) { return s->SetVolume(4.0); }, {0.625, 0.5}},
        {"SetDI(0.5)", [](const Source& s) { return s->SetDI(0.5); }, {0.21875, -0.25}},
        {"SetF0(0)", [](const Source& s) { return s->SetF0(0.0); }, {0.0, 0.0}},
        // 7.5·sqrt(480): a period of 0.5 s, of which 0.25 s are open
        {"SetF0(2)", [](const Source& s) { return s->SetF0(2.0); }, {0.125, -0.5}, 164.31676725154984},
        // 15·sqrt(7.5): open all the time
        {"SetOQ(1)", [](const Source& s) { return s->SetOQ(1.0); }, {0.40625, 0.625}, 41.079191812887455},
        {"SetSampleFreq(4)", [](const Source& s) { return s->SetSampleFreq(4.0); }, {0.25, -1.0}},
        {"SetSampleFreq(0)", [](const Source& s) { return s->SetSampleFreq(0.0); }, {0.0, 0.0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FakePacket packet;
        Fill(packet);
        const Source source = SourceOf(packet);
        EXPECT_EQ(Code(row.set(source)), Code(S_OK));
        ExpectSamples(source, row.samples, row.unit);
    }
}

TEST(TTSVoicingSourceStd, ResetRestartsThePeriodAndKeepsTheLastSample) {
    FakePacket packet;
    Fill(packet);
    const Source source = SourceOf(packet);
    ExpectSamples(source, {0.3125, 0.25});
    EXPECT_EQ(Code(source->Reset()), Code(S_OK));
    double last = 0.0;
    EXPECT_EQ(Code(source->GetOutputValue(&last)), Code(S_OK));
    EXPECT_DOUBLE_EQ(last, 0.25 * kK);
    ExpectSamples(source, {0.3125});
}

TEST(TTSVoicingSourceStd, AskingForNoValueStillAdvances) {
    FakePacket packet;
    Fill(packet);
    const Source source = SourceOf(packet);
    EXPECT_EQ(Code(source->CalculateNext(nullptr)), Code(S_OK));
    ExpectSamples(source, {0.25});
}

const std::vector<std::string> kReads = {"SampleFreq", "AV", "F0", "OQ", "FL", "FLT", "DI", "TL"};

TEST(TTSVoicingSourceStd, AFrameIsTakenWholeOrNotAtAll) {
    for (const std::string& call : kReads) {
        for (const HRESULT code : {S_FALSE, E_OUTOFMEMORY}) {
            SCOPED_TRACE(testing::Message() << call << " gives " << code);
            FakePacket packet, failing;
            Fill(packet);
            const Source source = SourceOf(packet);
            ExpectSamples(source, {0.3125});
            for (const std::string& item : kReads) failing.Set(item, 16.0);
            failing.Script(call, code);
            EXPECT_EQ(Code(source->SetParams(failing.Unknown(), GUID_NULL)), Code(E_FAIL));
            EXPECT_EQ(failing.Calls().back(), call);
            EXPECT_EQ(failing.References(), 0);
            ExpectSamples(source, {0.25, -0.1875});
        }
    }
}

TEST(TTSVoicingSourceStd, ReadsInAFixedOrderAndGivesTheQuerysCode) {
    FakePacket packet;
    Fill(packet);
    packet.ScriptQuery(IID_ILarynthVoiceParams, S_FALSE);
    const Source source = SourceOf(packet);
    EXPECT_EQ(packet.Calls(), kReads);
    packet.ScriptQuery(IID_ILarynthParams, S_FALSE);
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_FALSE));
    ExpectSamples(source, {0.3125});
}

}  // namespace
}  // namespace larynth
