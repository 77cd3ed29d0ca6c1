// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "com/Create.h"
#include "components/TTSParallelTract.h"
#include "components/TTSVocalTractF.h"
#include "components/TTSVocalTractR.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"

namespace larynth {
namespace {

using Calls = std::vector<std::string>;
using Samples = std::vector<double>;

/// The tract's output for `count` inputs, the first of them 1, the others 0.
Samples Impulse(auto& tract, int count) {
    Samples outputs;
    for (int i = 0; i < count; ++i) {
        double sample = 7.0;
        EXPECT_EQ(Code(tract->CalculateNext(i == 0 ? 1.0 : 0.0, &sample)), Code(S_OK));
        outputs.push_back(sample);
    }
    return outputs;
}

void SetSection(FakePacket& packet, const std::string& view, double A, double B, double C) {
    packet.Set(view + ".A", A);
    packet.Set(view + ".B", B);
    packet.Set(view + ".C", C);
}

void AppendSection(Calls& calls, const std::string& view) {
    for (const char* part : {"", ".A", ".B", ".C"}) calls.push_back(view + part);
}

const Calls kCascade = {"R0", "R1", "R2", "R3", "R4", "R5", "Z0"};
const Calls kParallel = {"P0", "P1", "P2", "P3", "P4", "P5", "P6"};

TEST(TTSVocalTractR, TakesEverySectionInOrder) {
    FakePacket packet;
    SetSection(packet, "R2", 2.0, 0.5, 0.25);
    SetSection(packet, "Z0", 3.0, 1.0, 0.5);
    const auto tract = MakeObject<TTSVocalTractR>();
    EXPECT_EQ(Impulse(tract, 3), (Samples{1.0, 0.0, 0.0}));  // passes its input before the first packet
    EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Impulse(tract, 4), (Samples{6.0, 5.0, 5.0, 3.75}));
    Calls expected;
    for (const std::string& view : kCascade) AppendSection(expected, view);
    EXPECT_EQ(packet.Calls(), expected);
    EXPECT_EQ(packet.References(), 0);
}

TEST(TTSVocalTractR, StopsAtAFailingCallAndKeepsWhatCameBefore) {
    const struct {
        const char* call;
        HRESULT code, result;
        double gain;  // of the sections that were reached: a factor 2 each
    } rows[] = {
        {"R0", E_OUTOFMEMORY, E_OUTOFMEMORY, 1.0},
        {"R0.A", E_NOTIMPL, E_NOTIMPL, 1.0},
        {"R2.B", E_INVALIDARG, E_INVALIDARG, 4.0},
        {"R5.C", DISP_E_EXCEPTION, DISP_E_EXCEPTION, 32.0},
        {"Z0", E_NOINTERFACE, E_NOINTERFACE, 64.0},
        {"Z0.C", E_POINTER, E_POINTER, 64.0},
        {"R3", S_FALSE, S_OK, 128.0},  // only the last GetC's success code counts
        {"R5.C", S_FALSE, S_OK, 128.0},
        {"Z0.B", S_FALSE, S_OK, 128.0},
        {"Z0.C", S_FALSE, S_FALSE, 128.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.call);
        FakePacket packet;
        for (const std::string& view : kCascade) SetSection(packet, view, 2.0, 0.0, 0.0);
        packet.Script(row.call, row.code);
        const auto tract = MakeObject<TTSVocalTractR>();
        EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(row.result));
        EXPECT_EQ(Impulse(tract, 1), Samples{row.gain});
        EXPECT_EQ(packet.References(), 0);
    }
}

TEST(TTSVocalTractR, AViewThatIsNotThereIsAFailure) {
    for (const auto& [view, gain] : {std::pair{"R2", 4.0}, std::pair{"Z0", 64.0}}) {
        FakePacket packet;
        for (const std::string& section : kCascade) SetSection(packet, section, 2.0, 0.0, 0.0);
        packet.Withhold(view);
        const auto tract = MakeObject<TTSVocalTractR>();
        EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(E_FAIL));
        EXPECT_EQ(Impulse(tract, 1), Samples{gain});
        EXPECT_EQ(packet.References(), 0);
    }
}

TEST(TTSVocalTractR, SectionsCanBeSetDirectly) {
    const auto tract = MakeObject<TTSVocalTractR>();
    int resonators = 0, antiResonators = 0;
    EXPECT_EQ(Code(tract->GetResonatorsCount(&resonators)), Code(S_OK));
    EXPECT_EQ(Code(tract->GetAntiResonatorsCount(&antiResonators)), Code(S_OK));
    EXPECT_EQ(resonators, 6);
    EXPECT_EQ(antiResonators, 1);
    EXPECT_EQ(Code(tract->GetResonatorsCount(nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(tract->GetAntiResonatorsCount(nullptr)), Code(E_POINTER));

    for (const int index : {-1, 6}) EXPECT_EQ(Code(tract->SetResonator(index, 9.0, 0.0, 0.0)), Code(E_FAIL));
    for (const int index : {-1, 1})
        EXPECT_EQ(Code(tract->SetAntiResonator(index, 9.0, 0.0, 0.0)), Code(E_FAIL));
    for (const int index : {0, 5}) EXPECT_EQ(Code(tract->SetResonator(index, 0.5, 0.0, 0.0)), Code(S_OK));
    EXPECT_EQ(Code(tract->SetAntiResonator(0, 4.0, 8.0, 16.0)), Code(S_OK));
    EXPECT_EQ(Impulse(tract, 4), (Samples{1.0, 2.0, 4.0, 0.0}));

    FakePacket packet;
    EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Impulse(tract, 2), (Samples{1.0, 0.0}));  // the packet's identities are back
}

/// y[n] = x[n] + 2·x[n−1] + 4·x[n−2] + 0.5·y[n−1] + 0.25·y[n−2].
void FillFilter(FakePacket& packet) {
    packet.Set("AlphaDegree", 2.0);
    packet.Set("Alpha0", 0.5);
    packet.Set("Alpha1", 0.25);
    packet.Set("BetaDegree", 3.0);
    packet.Set("Beta0", 1.0);
    packet.Set("Beta1", 2.0);
    packet.Set("Beta2", 4.0);
}

TEST(TTSVocalTractF, TakesThePacketsCoefficientsInOrder) {
    FakePacket packet;
    FillFilter(packet);
    const auto tract = MakeObject<TTSVocalTractF>();
    EXPECT_EQ(Impulse(tract, 3), (Samples{0.0, 0.0, 0.0}));  // silent before the first packet
    EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Impulse(tract, 4), (Samples{1.0, 2.5, 5.5, 3.375}));
    EXPECT_EQ(packet.Calls(),
              (Calls{"AlphaDegree", "Alpha0", "Alpha1", "BetaDegree", "Beta0", "Beta1", "Beta2"}));
}

TEST(TTSVocalTractF, HoldsTwelveFeedbackValues) {
    FakePacket packet;
    FillFilter(packet);
    packet.Set("AlphaDegree", 12.0);
    packet.Set("Alpha0", 0.0);
    packet.Set("Alpha1", 0.0);
    packet.Set("Alpha11", -3.0);
    const auto tract = MakeObject<TTSVocalTractF>();
    EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Impulse(tract, 14), (Samples{1, 2, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, -3, -6}));
}

TEST(TTSVocalTractF, WhatDoesNotFitOrIsNotDelivered) {
    const Samples old = {1.0, 2.5, 5.5};
    const struct {
        const char* call;
        double value;
        HRESULT code, result;
        Samples response;
    } rows[] = {
        {"AlphaDegree", 13.0, S_OK, E_FAIL, old},
        {"BetaDegree", 4.0, S_OK, E_FAIL, old},
        {"AlphaDegree", 1.0, S_OK, S_OK, {1.0, 1.25, 2.5625}},  // Alpha1 stays
        {"AlphaDegree", -1.0, S_OK, S_OK, {1.0, 1.5, 3.0}},     // nothing to copy: both stay
        {"AlphaDegree", 2.0, E_FAIL, S_OK, {1.0, 1.5, 3.0}},    // a degree that is not delivered is 0
        {"Alpha0", 9.0, E_FAIL, S_OK, {1.0, 1.0, 2.25}},        // and so is a coefficient
        {"Beta1", 9.0, S_FALSE, S_OK, {1.0, 9.25, 4.5625}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.call << " = " << row.value << ", " << Code(row.code));
        const auto tract = MakeObject<TTSVocalTractF>();
        FakePacket first, second;
        FillFilter(first);
        EXPECT_EQ(Code(tract->SetParams(first.Unknown(), GUID_NULL)), Code(S_OK));
        FillFilter(second);
        second.Set("Alpha0", 0.25);
        second.Set("Beta1", 1.0);
        second.Set("Beta2", 2.0);
        second.Set(row.call, row.value);
        second.Script(row.call, row.code);
        EXPECT_EQ(Code(tract->SetParams(second.Unknown(), GUID_NULL)), Code(row.result));
        EXPECT_EQ(Impulse(tract, 3), row.response);
        EXPECT_EQ(second.References(), 0);
    }
}

TEST(TTSParallelTract, TakesEverySectionAndTheBypass) {
    FakePacket packet;
    double A = 1.0;
    for (const std::string& view : kParallel) {
        SetSection(packet, view, A, 0.0, 0.0);
        A *= 2.0;
    }
    SetSection(packet, "P6", 64.0, 0.5, 0.25);
    packet.Set("AB", -0.5);
    const auto tract = MakeObject<TTSParallelTract>();
    EXPECT_EQ(Impulse(tract, 1), Samples{8.0});
    EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(Impulse(tract, 1), Samples{127.0});  // 126.5, and P6 adds half of its last output
    EXPECT_EQ(Impulse(tract, 1), Samples{159.0});
    Calls expected;
    for (const std::string& view : kParallel) AppendSection(expected, view);
    expected.push_back("AB");
    EXPECT_EQ(packet.Calls(), expected);
    EXPECT_EQ(packet.References(), 0);
}

TEST(TTSParallelTract, CodesOfTheSectionsCountAndThatOfTheBypassDoesNot) {
    const struct {
        const char* call;
        HRESULT code, result;
        double gain;  // sections 2 instead of 1, bypass 0.5 instead of 1
    } rows[] = {
        {"P0", E_OUTOFMEMORY, E_OUTOFMEMORY, 8.0},
        {"P2.B", E_NOTIMPL, E_NOTIMPL, 10.0},
        {"P6.C", E_INVALIDARG, E_INVALIDARG, 14.0},
        {"AB", E_FAIL, S_OK, 14.0},
        {"AB", S_FALSE, S_OK, 14.5},
        {"P5.C", S_FALSE, S_OK, 14.5},
        {"P6.C", S_FALSE, S_FALSE, 14.5},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.call);
        FakePacket packet;
        for (const std::string& view : kParallel) SetSection(packet, view, 2.0, 0.0, 0.0);
        packet.Set("AB", 0.5);
        packet.Script(row.call, row.code);
        const auto tract = MakeObject<TTSParallelTract>();
        EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(row.result));
        EXPECT_EQ(Impulse(tract, 1), Samples{row.gain});
        EXPECT_EQ(packet.References(), 0);
    }
}

TEST(TTSParallelTract, AViewThatIsNotThereIsAFailure) {
    FakePacket packet;
    packet.Set("P0.A", 2.0);
    packet.Withhold("P1");
    const auto tract = MakeObject<TTSParallelTract>();
    EXPECT_EQ(Code(tract->SetParams(packet.Unknown(), GUID_NULL)), Code(E_FAIL));
    EXPECT_EQ(Impulse(tract, 1), Samples{9.0});  // the bypass gain stays too
}

}  // namespace
}  // namespace larynth
