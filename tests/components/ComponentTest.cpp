// SPDX-License-Identifier: MIT
/// What every component has in common: how it takes a packet and gives samples.
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include "com/Create.h"
#include "components/NoiseSources.h"
#include "components/TTSParallelTract.h"
#include "components/TTSVocalTractF.h"
#include "components/TTSVocalTractR.h"
#include "components/TTSVoicingSourceFilter.h"
#include "components/TTSVoicingSourceStd.h"
#include "components/TTSVoicingSourceWave.h"
#include "tests/support/BadPointer.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"
#include "tests/support/Numbers.h"
#include "tests/support/Partners.h"

namespace larynth::test {
namespace {

using Values = std::map<std::string, double>;
struct Component {
    std::function<HRESULT(double, double*)> next;
    std::function<HRESULT(double*)> last;
    std::function<HRESULT(IUnknown*)> setParams;
};

template <class Class>
Component Make() {
    const std::shared_ptr<Class> object = MakeObject<Class>();
    const auto next = [object](double x, double* pd) {
        if constexpr (requires { object->CalculateNext(x, pd); }) {
            return object->CalculateNext(x, pd);
        } else {
            return object->CalculateNext(pd);
        }
    };
    return {next, [object](double* pd) { return object->GetOutputValue(pd); },
            [object](IUnknown* packet) { return object->SetParams(packet, GUID_NULL); }};
}

std::string Sections(const char* views, char group) {
    std::string calls;
    for (const char* n = views; *n != '\0'; ++n) {
        const std::string view{group, *n};
        for (const char* part : {" ", ".A ", ".B ", ".C "}) calls += view + part;
    }
    return calls;
}

const IID kTiming = IID_ILarynthParams, kVoice = IID_ILarynthVoiceParams;

const struct Kind {
    const char* name;
    Component (*make)();
    std::vector<IID> needs;  // the packet's interfaces, each of which must be there
    std::string reads;       // of a packet with kSounding, in order
    HRESULT withoutPacket = E_FAIL, withoutValues = E_FAIL;
} kKinds[] = {
    {"voicing", Make<TTSVoicingSourceStd>, {kVoice, kTiming}, "SampleFreq AV F0 OQ FL FLT DI TL "},
    {"wave", Make<TTSVoicingSourceWave>, {kVoice, kTiming}, "SampleFreq AV F0 "},
    {"filter", Make<TTSVoicingSourceFilter>, {kVoice}, "F0 FL FLT SampleFreq TL ", E_POINTER, S_OK},
    {"R", Make<TTSVocalTractR>, {IID_ILarynthVocalTractParams}, Sections("012345", 'R') + Sections("0", 'Z')},
    {"F", Make<TTSVocalTractF>, {IID_ILarynthVocalTractFilterParams}, "AlphaDegree BetaDegree Beta0 "},
    {"parallel", Make<TTSParallelTract>, {IID_ILarynthParallelTractParams}, Sections("0123456", 'P') + "AB "},
    {"aspiration", Make<TTSAspirationSource>, {IID_ILarynthAspirationParams}, "AH "},
    {"frication", Make<TTSFricationSource>, {IID_ILarynthFricationParams}, "AF "},
};

/// No component is silent with these.
const Values kSounding = {{"AV", 0.5}, {"OQ", 0.5}, {"AH", 0.5},    {"AF", 0.5},      {"AB", 0.5},
                          {"F0", 100}, {"TL", 5},   {"Beta0", 0.5}, {"BetaDegree", 1}};

TEST(Component, RepeatsItsLastSampleOnceThereIsOne) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        Script script;
        FakePacket packet(script, kSounding);
        const Component component = kind.make();
        double sample = 7.0, next = 0.0;
        component.setParams(packet.Unknown());
        std::string reads;
        for (const std::string& call : script.calls) reads += call + " ";
        EXPECT_EQ(reads, kind.reads);
        EXPECT_EQ(Code(component.last(nullptr)), "E_FAIL");
        EXPECT_EQ(Code(component.next(1.0, nullptr)), "S_OK");
        EXPECT_EQ(Code(component.next(1.0, &next)), "S_OK");
        EXPECT_EQ(Code(component.last(&sample)), "S_OK");
        EXPECT_EQ(sample, next);
        EXPECT_EQ(Code(component.last(ReadOnly<double>())), "E_POINTER");
    }
}

TEST(Component, RefusesWhatIsNoPacketForIt) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        const Component component = kind.make();
        EXPECT_EQ(Code(component.setParams(nullptr)), Code(kind.withoutPacket));
        for (const IID& missing : kind.needs) {
            Script script;
            FakePacket packet(script);
            script.ReturnFromQuery(missing, E_NOINTERFACE);
            EXPECT_EQ(Code(component.setParams(packet.Unknown())), Code(kind.withoutValues));
            EXPECT_TRUE(script.calls.empty());
        }
        for (const std::string& raising :
             {std::string("QueryInterface"), kind.reads.substr(0, kind.reads.find(' '))}) {
            Script script;
            FakePacket packet(script, kSounding);
            script.Throw(raising);
            EXPECT_EQ(Code(component.setParams(packet.Unknown())), "E_FAIL") << raising;
        }
    }
}

/// What a packet's call returns, what SetParams returns then, and the response to 1, 0, 0, … behind it.
struct Row {
    const char* call;
    HRESULT code, result;
    Samples impulse;
};

constexpr HRESULT kOdd = Script::kFailure;

/// A component gets the values of one packet and then, with a call that answers as the row says, another's.
template <class Class>
void ExpectTaken(const Values& first, const Values& second, std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.call) + " gives " + Code(row.code));
        const Component component = Make<Class>();
        Script before, after;
        component.setParams(FakePacket(before, first).Unknown());
        after.Return(row.call, row.code);
        EXPECT_EQ(Code(component.setParams(FakePacket(after, second).Unknown())), Code(row.result));
        for (std::size_t i = 0; i < row.impulse.size(); ++i) {
            double sample = 7.0;
            component.next(i == 0 ? 1.0 : 0.0, &sample);
            EXPECT_DOUBLE_EQ(sample, row.impulse[i]) << i;
        }
    }
}

/// Sections that multiply by 2.
Values Doubling(const char* group, Values values) {
    for (const char* n = "0123456"; *n != '\0'; ++n) values[std::string(group) + *n + ".A"] = 2;
    return values;
}

TEST(TTSVocalTractR, StopsAtAFailingCallAndKeepsWhatCameBefore) {
    const Values values = Doubling("R", {{"Z0.A", 2}});
    ExpectTaken<TTSVocalTractR>({}, values,
                                {{"", S_OK, S_OK, {128}},
                                 {"R2.B", kOdd, kOdd, {4}},
                                 {"R2.C", kOdd, kOdd, {4}},
                                 {"R5.C", S_FALSE, S_OK, {128}},  // only the last GetC's success code counts
                                 {"Z0.C", S_FALSE, S_FALSE, {128}}});
    ExpectTaken<TTSVocalTractR>({}, Doubling("R", {{"R2 is null", 1}}), {{"", S_OK, E_FAIL, {4}}});
}

TEST(TTSParallelTract, StopsAtAFailingSectionAndLetsTheBypassFail) {
    ExpectTaken<TTSParallelTract>({{"AB", 1}}, Doubling("P", {{"AB", 0.5}}),
                                  {{"", S_OK, S_OK, {14.5}},
                                   {"P2.B", kOdd, kOdd, {10}},  // the bypass gain stays 1 too
                                   {"AB", kOdd, S_OK, {14}},
                                   {"P6.C", S_FALSE, S_FALSE, {14.5}}});
}

TEST(TTSVocalTractF, TakesWhatFitsAndIsDelivered) {
    // y[n] = x[n] + 2·x[n−1] + 4·x[n−2] + 0.5·y[n−1] + 0.25·y[n−2]
    const Values filter = {{"AlphaDegree", 2}, {"Alpha0", 0.5}, {"Alpha1", 0.25}, {"BetaDegree", 3},
                           {"Beta0", 1},       {"Beta1", 2},    {"Beta2", 4}};
    const Samples old = {1, 2.5, 5.5, 3.375};
    const auto expect = [&](Values changed, const Row& row) {
        changed.merge(Values{{"Alpha0", 0.25}, {"Beta1", 1}, {"Beta2", 2}});
        changed.merge(Values(filter));
        ExpectTaken<TTSVocalTractF>(filter, changed, {row});
    };
    expect({{"AlphaDegree", 13}}, {"", S_OK, E_FAIL, old});
    expect({{"AlphaDegree", 1}}, {"", S_OK, S_OK, {1, 1.25, 2.5625}});  // Alpha1 stays
    expect({{"AlphaDegree", -1}}, {"", S_OK, S_OK, {1, 1.5, 3}});       // both stay
    expect({}, {"AlphaDegree", kOdd, S_OK, {1, 1.5, 3}});               // a degree that fails is 0
    expect({}, {"Alpha0", kOdd, S_OK, {1, 1, 2.25}});                   // and so is a coefficient
    expect({{"AlphaDegree", 12}, {"Alpha0", 0}, {"Alpha1", 0}, {"Alpha11", -3}},
           {"", S_OK, S_OK, {1, 1, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, -3, -3}});
}

TEST(TTSVoicingSourceStd, TakesAFrameWholeOrNotAtAll) {
    // Eight samples a period of 1 s; K = 15·sqrt(60).
    constexpr double kK = 116.1895003862225;
    const Samples pulse = {0.3125 * kK, 0.25 * kK, -0.1875 * kK, -1.0 * kK, 0, 0, 0, 0, 0, 0.3125 * kK};
    const Values voice = {{"SampleFreq", 8}, {"F0", 1}, {"OQ", 0.5}, {"AV", 2}};
    const Values other = {{"SampleFreq", 16}, {"F0", 16}, {"OQ", 16}, {"AV", 16}, {"DI", 16}};
    for (const char* call : {"SampleFreq", "AV", "F0", "OQ", "FL", "FLT", "DI", "TL"})
        ExpectTaken<TTSVoicingSourceStd>(voice, other, {{call, S_FALSE, E_FAIL, pulse}});
}

TEST(TTSVoicingSourceFilter, KeepsWhatItReadBeforeAFailure) {
    constexpr double kTilted = 0.2108348735838601;
    ExpectTaken<TTSVoicingSourceFilter>({}, {{"TL", 10.9}},
                                        {{"", S_OK, S_OK, {kTilted}},
                                         {"FLT", kOdd, kOdd, {1}},
                                         {"SampleFreq", kOdd, S_OK, {1}}});  // without a frequency no tilt
    constexpr double kMost = 0.014328472161597198;
    for (const auto& [TL, gain] :
         {std::pair(0.9, 1.0), {-3.0, 1.0}, {std::nan(""), 1.0}, {-kInfinity, 1.0}, {kInfinity, kMost}})
        ExpectTaken<TTSVoicingSourceFilter>({}, {{"TL", TL}}, {{"", S_OK, S_OK, {gain}}});
}

}  // namespace
}  // namespace larynth::test
