// SPDX-License-Identifier: MIT
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "com/Create.h"
#include "components/TTSVoicingSourceFilter.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"
#include "tests/support/FakeVoicingSource.h"

namespace larynth {
namespace {

using Filter = Created<TTSVoicingSourceFilter>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

double Next(const Filter& filter, double x) {
    double sample = 7.0;
    EXPECT_EQ(Code(filter->CalculateNext(x, &sample)), Code(S_OK));
    return sample;
}

void SetParams(const Filter& filter, FakePacket& packet) {
    EXPECT_EQ(Code(filter->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(packet.References(), 0);
}

/// A frame whose flutter sets `F0` itself on the source: its time stands still.
void FillStill(FakePacket& packet, double F0) {
    packet.SetF0(F0);
    packet.SetFL(0.3);
}

TEST(TTSVoicingSourceFilter, TiltIsThePacketsTruncated) {
    const struct {
        double TL;
        double sample;  // the first, of the input 1
    } rows[] = {
        {0.0, 1.0},
        {0.9, 1.0},
        {-0.5, 1.0},
        {-3.0, 1.0},  // no such tilt: none
        {kNan, 1.0},
        {-kInfinity, 1.0},
        {1.0, 0.5047855704504428},
        {7.9, 0.2550577622262994},
        {10.0, 0.2108348735838601},
        {11.0, 0.19523162967054908},
        {41.0, 0.014328472161597198},
        {50.0, 0.014328472161597198},
        {kInfinity, 0.014328472161597198},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.TL);
        FakePacket packet;
        packet.SetTL(row.TL);
        const Filter filter = MakeObject<TTSVoicingSourceFilter>();
        EXPECT_EQ(Next(filter, -3.0), -3.0);  // no tilt before the first packet
        SetParams(filter, packet);
        EXPECT_EQ(Next(filter, 1.0), row.sample);
    }
}

TEST(TTSVoicingSourceFilter, FlutterMovesTheSource) {
    FakeVoicingSource source;
    source.setCode = E_FAIL;  // is not examined
    FakePacket packet;
    packet.SetF0(100.0);
    packet.SetFL(0.3);
    packet.SetFLT(5000.0);  // 0.05 of flutter time a sample
    const Filter filter = MakeObject<TTSVoicingSourceFilter>();
    SetParams(filter, packet);
    Next(filter, 1.0);  // without a source the flutter time stands still

    EXPECT_EQ(Code(filter->SetVoicingSource(&source, GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Next(filter, 1.0), 1.0);
    EXPECT_EQ(Code(filter->CalculateNext(1.0, nullptr)), Code(S_OK));
    EXPECT_EQ(source.frequencies, (std::vector<double>{110.35605906843429, 102.10912854117358}));

    for (int i = 0; i < 1000; ++i) Next(filter, 1.0);
    ASSERT_EQ(source.frequencies.size(), 1002U);
    for (const double F0 : source.frequencies) {
        EXPECT_GE(F0, 70.0);
        EXPECT_LE(F0, 130.0);
    }
}

TEST(TTSVoicingSourceFilter, ASteadyOrUnvoicedFrameLeavesTheSourceAlone) {
    FakeVoicingSource source;
    const Filter filter = MakeObject<TTSVoicingSourceFilter>();
    EXPECT_EQ(Code(filter->SetVoicingSource(&source, GUID_NULL)), Code(S_OK));
    Next(filter, 1.0);  // a new filter has neither F0 nor flutter
    FakePacket packet;
    packet.SetFLT(5000.0);
    const std::pair<double, double> frames[] = {{100.0, 0.0}, {0.0, 0.3},    {-100.0, 0.3},
                                                {kNan, 0.3},  {100.0, kNan}, {100.0, -0.3}};
    for (const auto& [F0, FL] : frames) {
        packet.SetF0(F0);
        packet.SetFL(FL);
        SetParams(filter, packet);
        Next(filter, 1.0);
        EXPECT_TRUE(source.frequencies.empty()) << F0 << ", " << FL;
    }
    packet.SetF0(100.0);
    packet.SetFL(0.3);
    SetParams(filter, packet);
    Next(filter, 1.0);
    EXPECT_EQ(source.frequencies, std::vector<double>{110.35605906843429});  // the flutter's first step
}

TEST(TTSVoicingSourceFilter, HoldsOneSourceAtATime) {
    FakeVoicingSource first, second, failing;
    failing.queryCode = E_OUTOFMEMORY;
    FakePacket packet;
    FillStill(packet, 100.0);
    Filter filter = MakeObject<TTSVoicingSourceFilter>();
    SetParams(filter, packet);

    EXPECT_EQ(Code(filter->SetVoicingSource(&first, GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Code(filter->SetVoicingSource(&second, GUID_NULL)), Code(S_OK));
    EXPECT_EQ(first.references, 0);
    EXPECT_EQ(second.references, 1);
    Next(filter, 1.0);
    EXPECT_EQ(second.frequencies, std::vector<double>{100.0});

    EXPECT_EQ(Code(filter->SetVoicingSource(&failing, GUID_NULL)), Code(E_OUTOFMEMORY));
    EXPECT_EQ(second.references, 0);
    EXPECT_EQ(Code(filter->SetVoicingSource(packet.Unknown(), GUID_NULL)), Code(E_NOINTERFACE));
    EXPECT_EQ(packet.References(), 0);
    Next(filter, 1.0);
    EXPECT_EQ(second.frequencies.size(), 1U);

    EXPECT_EQ(Code(filter->SetVoicingSource(&first, GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Code(filter->SetVoicingSource(nullptr, GUID_NULL)), Code(S_OK));
    EXPECT_EQ(first.references, 0);
    EXPECT_EQ(Code(filter->SetVoicingSource(&second, GUID_NULL)), Code(S_OK));
    filter.reset();
    EXPECT_EQ(second.references, 0);
}

TEST(TTSVoicingSourceFilter, ValuesReadBeforeAFailureAreInForce) {
    const double kTilted = 0.2108348735838601;  // TL 10
    const struct {
        const char* call;
        HRESULT code, result;
        std::vector<double> frequencies;
        double sample;
    } rows[] = {
        {"F0", E_OUTOFMEMORY, E_OUTOFMEMORY, {100.0}, 1.0},
        {"FL", E_NOTIMPL, E_NOTIMPL, {200.0}, 1.0},
        {"FLT", E_INVALIDARG, E_INVALIDARG, {}, 1.0},  // FL 0 was read before it
        {"TL", E_FAIL, E_FAIL, {}, 1.0},
        {"SampleFreq", E_FAIL, S_OK, {}, 1.0},  // without a frequency no tilt, but no failure either
        {"SampleFreq", S_FALSE, S_OK, {}, kTilted},
        {"F0", S_FALSE, S_OK, {}, kTilted},
        {"TL", S_FALSE, S_OK, {}, kTilted},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.call << " gives " << row.code);
        FakeVoicingSource source;
        const Filter filter = MakeObject<TTSVoicingSourceFilter>();
        EXPECT_EQ(Code(filter->SetVoicingSource(&source, GUID_NULL)), Code(S_OK));
        FakePacket first, second;
        FillStill(first, 100.0);
        SetParams(filter, first);
        second.SetF0(200.0);
        second.SetTL(10.0);
        second.Script(row.call, row.code);
        EXPECT_EQ(Code(filter->SetParams(second.Unknown(), GUID_NULL)), Code(row.result));
        EXPECT_EQ(second.References(), 0);
        EXPECT_EQ(Next(filter, 1.0), row.sample);
        EXPECT_EQ(source.frequencies, row.frequencies);
    }
}

TEST(TTSVoicingSourceFilter, ReadsInAFixedOrder) {
    FakePacket packet;
    const Filter filter = MakeObject<TTSVoicingSourceFilter>();
    SetParams(filter, packet);
    EXPECT_EQ(packet.Calls(), (std::vector<std::string>{"F0", "FL", "FLT", "SampleFreq", "TL"}));

    FakePacket untimed;
    untimed.ScriptQuery(IID_ILarynthParams, E_OUTOFMEMORY);
    EXPECT_EQ(Code(filter->SetParams(untimed.Unknown(), GUID_NULL)), Code(E_OUTOFMEMORY));
    EXPECT_EQ(untimed.Calls(), (std::vector<std::string>{"F0", "FL", "FLT"}));
    EXPECT_EQ(untimed.References(), 0);
}

TEST(TTSVoicingSourceFilter, AnUnreadablePacketIsABadPointer) {
    const Filter filter = MakeObject<TTSVoicingSourceFilter>();
    auto* const unmapped = reinterpret_cast<IUnknown*>(std::uintptr_t{8});
    EXPECT_EQ(Code(filter->SetParams(unmapped, GUID_NULL)), Code(E_POINTER));
}

}  // namespace
}  // namespace larynth
