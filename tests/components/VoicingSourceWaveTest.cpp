// SPDX-License-Identifier: MIT
#include <climits>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include <larynth/Classes.h>

#include "com/Create.h"
#include "components/TTSVoicingSourceWave.h"
#include "tests/components/FakeContainer.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"

namespace larynth {
namespace {

using Source = Created<TTSVoicingSourceWave>;
using Samples = std::vector<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kUntouched = 7.0;

/// Ten entries a reference period; F0 = 49 plays one of them a sample, and none of the tests goes round.
constexpr double kSampleFreq = 490.0;

/// With an open quotient of 0.3 this is the beginning of the table, up to the factor kUnit, and 0 follows.
const Samples kWave = {3.0, -1.0, 2.0};
constexpr double kUnit = 0.8451542547285166;  // sqrt(10/14)

void Load(const Source& source, const Samples& wave) {
    FakeSource pushed(wave);
    EXPECT_EQ(Code(source->LoadProperties(&pushed)), Code(S_OK));
    EXPECT_EQ(pushed.references, 0);
}

Source LoadedSource() {
    Source source = MakeObject<TTSVoicingSourceWave>();
    source->SetSampleFreq(kSampleFreq);
    source->SetF0(49.0);
    source->SetVolume(1.0);
    Load(source, kWave);
    EXPECT_EQ(Code(source->SetOQ(0.3)), Code(S_OK));
    return source;
}

Samples WaveOf(const Source& source) {
    FakeSink sink;
    EXPECT_EQ(Code(source->DescribeProperties(&sink)), Code(S_OK));
    return sink.announcements.at(0).elements;
}

void ExpectSamples(const Source& source, const Samples& expected, double unit = kUnit) {
    for (const double y : expected) {
        double sample = kUntouched;
        EXPECT_EQ(Code(source->CalculateNext(&sample)), Code(S_OK));
        EXPECT_NEAR(sample, y * unit, 1e-12);
    }
}

TEST(TTSVoicingSourceWave, PlaysTheWaveformThatAContainerPushes) {
    const Source source = LoadedSource();
    ExpectSamples(source, {3.0, -1.0, 2.0, 0.0});
    source->SetVolume(-2.0);
    EXPECT_EQ(Code(source->Reset()), Code(S_OK));
    ExpectSamples(source, {0.0}, 1.0);
    double last = kUntouched;
    EXPECT_EQ(Code(source->GetOutputValue(&last)), Code(S_OK));
    EXPECT_EQ(last, 0.0);
}

TEST(TTSVoicingSourceWave, AnnouncesItsWaveform) {
    const Source source = LoadedSource();
    FakeSink sink;
    sink.result = E_OUTOFMEMORY;
    EXPECT_EQ(Code(source->DescribeProperties(&sink)), Code(S_OK));
    ASSERT_EQ(sink.announcements.size(), 1u);
    const FakeSink::Announcement& announced = sink.announcements[0];
    EXPECT_EQ(announced.owner, static_cast<IACLPersistProperties*>(source.get()));
    EXPECT_EQ(announced.name, "Wave");
    EXPECT_EQ(announced.value, nullptr);
    EXPECT_EQ(announced.type, 6);
    EXPECT_EQ(announced.reserved, (std::vector<LONG>{0, 0, 0}));
    EXPECT_EQ(announced.dimensions, 1);
    EXPECT_EQ(announced.size, 3);
    EXPECT_EQ(announced.elements, kWave);
    EXPECT_EQ(Code(source->DescribeProperties(nullptr)), Code(E_POINTER));
    EXPECT_EQ(WaveOf(MakeObject<TTSVoicingSourceWave>()), Samples{});
}

TEST(TTSVoicingSourceWave, LoadingGivesTheSourcesResultAndRebuildsInAnyCase) {
    for (const HRESULT result : {S_FALSE, E_OUTOFMEMORY}) {
        const Source source = LoadedSource();
        FakeSource pushed({5.0});
        pushed.result = result;
        EXPECT_EQ(Code(source->LoadProperties(&pushed)), Code(result));
        ExpectSamples(source, {5.0}, 0.3464101615137755);  // sqrt(3/25): one sample in a period of three
    }
    EXPECT_EQ(Code(LoadedSource()->LoadProperties(nullptr)), Code(E_POINTER));
}

TEST(TTSVoicingSourceWave, TheElementWithIndexZeroFixesTheLength) {
    const Source source = MakeObject<TTSVoicingSourceWave>();
    const auto set = [&](int i, int size, double value) {
        FakeIndex index(i, size);
        EXPECT_EQ(Code(source->SetPropertyValue(nullptr, "Wave", 0, &value, 6, 0, 0, &index)), Code(S_OK));
        EXPECT_EQ(index.references, 0);
    };
    set(0, 3, 1.0);
    EXPECT_EQ(WaveOf(source), (Samples{1.0, 0.0, 0.0}));
    set(1, 99, 2.0);
    set(2, 0, 3.0);
    EXPECT_EQ(WaveOf(source), (Samples{1.0, 2.0, 3.0}));
    set(0, 2, 4.0);
    EXPECT_EQ(WaveOf(source), (Samples{4.0, 2.0}));
}

TEST(TTSVoicingSourceWave, RefusesElementsThatItCannotPlace) {
    const double value = 9.0;
    const struct {
        const char* name;
        const void* value;
        int index, size;
        HRESULT result;
    } rows[] = {
        {nullptr, &value, 0, 3, E_FAIL}, {"Wave", nullptr, 0, 3, E_FAIL},
        {"wave", &value, 0, 1, S_OK},    {"Wave2", &value, 0, 1, S_OK},
        {"", &value, 0, 1, S_OK},        {"Wave", &value, 3, 4, E_FAIL},
        {"Wave", &value, -1, 3, E_FAIL}, {"Wave", &value, INT_MAX, INT_MAX, E_FAIL},
        {"Wave", &value, 0, 0, E_FAIL},  {"Wave", &value, INT_MIN, 3, E_FAIL},
        {"Wave", &value, 0, -1, E_FAIL}, {"Wave", &value, 0, INT_MAX, E_FAIL},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << (row.name ? row.name : "null") << ' ' << row.index);
        const Source source = LoadedSource();
        FakeIndex index(row.index, row.size);
        EXPECT_EQ(Code(source->SetPropertyValue(nullptr, row.name, 0, row.value, 6, 0, 0, &index)),
                  Code(row.result));
        EXPECT_EQ(index.references, 0);
        EXPECT_EQ(WaveOf(source), kWave);
    }
}

TEST(TTSVoicingSourceWave, HandsOutElementsThatItHas) {
    const Source source = LoadedSource();
    const struct {
        const char* name;
        int index;
        HRESULT result;
        int calls;
    } rows[] = {
        {"Wave", 2, S_OK, 1},         {"Wave", 3, E_FAIL, 0}, {"Wave", -1, E_FAIL, 0},
        {"Wave", INT_MAX, E_FAIL, 0}, {"WAVE", 0, S_OK, 0},   {nullptr, 0, E_FAIL, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << (row.name ? row.name : "null") << ' ' << row.index);
        FakeIndex index(row.index, 0);
        FakeHolder holder;
        holder.result = E_OUTOFMEMORY;
        EXPECT_EQ(Code(source->GetPropertyValue(&holder, row.name, 0, &index)), Code(row.result));
        EXPECT_EQ(holder.calls, row.calls);
        EXPECT_EQ(holder.value, row.calls != 0 ? 2.0 : 0.0);
        EXPECT_EQ(holder.type, row.calls != 0 ? 6 : 0);
        EXPECT_EQ(index.references, 0);
    }
    FakeIndex index(0, 0);
    EXPECT_EQ(Code(source->GetPropertyValue(nullptr, "Wave", 0, &index)), Code(E_FAIL));
}

TEST(TTSVoicingSourceWave, AnIndexObjectThatFailsGivesItsCode) {
    const Source source = LoadedSource();
    FakeHolder holder;
    const double value = 9.0;
    const auto expectBoth = [&](IUnknown* index, HRESULT code) {
        EXPECT_EQ(Code(source->SetPropertyValue(nullptr, "Wave", 0, &value, 6, 0, 0, index)), Code(code));
        EXPECT_EQ(Code(source->GetPropertyValue(&holder, "Wave", 0, index)), Code(code));
    };
    expectBoth(nullptr, E_FAIL);
    expectBoth(&holder, E_NOINTERFACE);
    FakeIndex index(0, 3);
    index.result = E_OUTOFMEMORY;
    expectBoth(&index, E_OUTOFMEMORY);
    index.queryCode = DISP_E_EXCEPTION;
    expectBoth(&index, DISP_E_EXCEPTION);
    EXPECT_EQ(holder.calls, 0);
    EXPECT_EQ(holder.references + index.references, 0);
    EXPECT_EQ(WaveOf(source), kWave);
}

TEST(TTSVoicingSourceWave, TellsHowItCanBeCreatedAgain) {
    const Source source = MakeObject<TTSVoicingSourceWave>();
    CLSID id{};
    LPCSTR name = nullptr;
    EXPECT_EQ(Code(source->GetClassID(&id)), Code(S_OK));
    EXPECT_EQ(id, CLSID_TTSVoicingSourceWave);
    EXPECT_EQ(Code(source->GetProgID(&name)), Code(S_OK));
    EXPECT_STREQ(name, "Larynth.TTSVoicingSourceWave");
    EXPECT_EQ(Code(source->GetClassID(nullptr)), Code(E_POINTER));
    EXPECT_EQ(Code(source->GetProgID(nullptr)), Code(E_POINTER));
}

TEST(TTSVoicingSourceWave, TheOpenQuotientRebuildsAndIsAtMostNinetyFivePercent) {
    const struct {
        double set, got;
        Samples samples;
        double unit;
    } rows[] = {
        {0.3, 0.3, {3.0, -1.0, 2.0, 0.0}, kUnit},
        {0.15, 0.15, {3.0, 2.0, 0.0, 0.0}, 1.1952286093343936},  // sqrt(20/14)
        {1.5, 0.95, {3.0, 1.8, 0.6, -0.6}, 0.4629100498862757},  // sqrt(3/14)
        {0.95, 0.95, {3.0, 1.8, 0.6, -0.6}, 0.4629100498862757},
        {0.05, 0.05, {0.0, 0.0, 0.0, 0.0}, 1.0},
        {-1.0, -1.0, {0.0, 0.0, 0.0, 0.0}, 1.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.set);
        const Source source = LoadedSource();
        double OQ = kUntouched;
        EXPECT_EQ(Code(source->SetOQ(row.set)), Code(S_OK));
        EXPECT_EQ(Code(source->GetOQ(&OQ)), Code(S_OK));
        EXPECT_EQ(OQ, row.got);
        ExpectSamples(source, row.samples, row.unit);
    }
    EXPECT_EQ(Code(LoadedSource()->GetOQ(nullptr)), Code(E_POINTER));
}

TEST(TTSVoicingSourceWave, ATableThatCannotBeBuiltIsRefused) {
    const Source source = LoadedSource();
    FakeSource pushed(kWave);
    EXPECT_EQ(Code(source->SetOQ(kNan)), Code(E_FAIL));
    for (const double fs : {-11025.0, 1e18, kNan}) {
        source->SetSampleFreq(fs);
        EXPECT_EQ(Code(source->SetOQ(0.7)), Code(E_FAIL)) << fs;
        EXPECT_EQ(Code(source->LoadFromTxt(nullptr)), Code(E_FAIL)) << fs;
        EXPECT_EQ(Code(source->LoadProperties(&pushed)), Code(E_FAIL)) << fs;
    }
    double OQ = kUntouched;
    EXPECT_EQ(Code(source->GetOQ(&OQ)), Code(S_OK));
    EXPECT_EQ(OQ, 0.3);
    source->SetSampleFreq(kSampleFreq);
    ExpectSamples(source, {3.0, -1.0, 2.0, 0.0});
}

TEST(TTSVoicingSourceWave, LoadFromTxtReadsNothingAndRebuildsForTheSampleFrequency) {
    for (const char* name : {"/none/such", "/dev/null", "", static_cast<const char*>(nullptr)}) {
        const Source source = LoadedSource();
        source->SetSampleFreq(2 * kSampleFreq);
        EXPECT_EQ(Code(source->LoadFromTxt(const_cast<char*>(name))), Code(S_OK));
        EXPECT_EQ(WaveOf(source), kWave);
        ExpectSamples(source, {3.0, 1.0, -1.0, 0.5});
    }
}

TEST(TTSVoicingSourceWave, TheDefaultPitchIsTakenAndNotTold) {
    const Source source = LoadedSource();
    EXPECT_EQ(Code(source->SetDefaultPitch(50.0)), Code(S_OK));
    double pitch = kUntouched;
    EXPECT_EQ(Code(source->GetDefaultPitch(&pitch)), Code(S_OK));
    EXPECT_EQ(pitch, kUntouched);
    EXPECT_EQ(Code(source->GetDefaultPitch(nullptr)), Code(S_OK));
    ExpectSamples(source, {3.0, -1.0});
}

TEST(TTSVoicingSourceWave, WithoutAPitchNothingHappens) {
    const Source source = LoadedSource();
    double sample = kUntouched;
    source->SetF0(0.0);
    EXPECT_EQ(Code(source->CalculateNext(&sample)), Code(S_OK));
    EXPECT_EQ(Code(source->GetOutputValue(&sample)), Code(E_FAIL));
    source->SetF0(49.0);
    ExpectSamples(source, {3.0, -1.0});
    for (const double F0 : {0.0, -0.0, kNan}) {
        source->SetF0(F0);
        EXPECT_EQ(Code(source->CalculateNext(&sample)), Code(S_OK));
        EXPECT_EQ(Code(source->CalculateNext(nullptr)), Code(S_OK));
        EXPECT_EQ(sample, kUntouched);
        double last = 0.0;
        EXPECT_EQ(Code(source->GetOutputValue(&last)), Code(S_OK));
        EXPECT_NEAR(last, -kUnit, 1e-12);
    }
    source->SetF0(49.0);
    EXPECT_EQ(Code(source->CalculateNext(nullptr)), Code(S_OK));
    ExpectSamples(source, {0.0});
    EXPECT_EQ(Code(source->GetOutputValue(nullptr)), Code(E_POINTER));
}

void Fill(FakePacket& packet) {
    packet.SetSampleFreq(kSampleFreq);
    packet.SetAV(2.0);
    packet.SetF0(98.0);
}

const std::vector<std::string> kReads = {"SampleFreq", "AV", "F0"};

TEST(TTSVoicingSourceWave, TakesThePacketsFrame) {
    FakePacket packet;
    Fill(packet);
    packet.ScriptQuery(IID_ILarynthVoiceParams, S_FALSE);
    const Source source = LoadedSource();
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_OK));
    EXPECT_EQ(packet.Calls(), kReads);
    ExpectSamples(source, {6.0, 4.0, 0.0});
    packet.ScriptQuery(IID_ILarynthParams, S_FALSE);
    packet.SetSampleFreq(2 * kSampleFreq);
    EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(S_FALSE));
    EXPECT_EQ(packet.References(), 0);
    ExpectSamples(source, {6.0});  // the table is as it was: the phase, now twelve of its ten entries, wraps
}

TEST(TTSVoicingSourceWave, AFrameIsTakenWholeOrNotAtAll) {
    const Source source = LoadedSource();
    const auto expectRefused = [&](FakePacket& packet) {
        Fill(packet);
        EXPECT_EQ(Code(source->SetParams(packet.Unknown(), GUID_NULL)), Code(E_FAIL));
        EXPECT_EQ(packet.References(), 0);
    };
    for (const std::string& call : kReads) {
        for (const HRESULT code : {S_FALSE, E_OUTOFMEMORY}) {
            FakePacket packet;
            packet.Script(call, code);
            expectRefused(packet);
            EXPECT_EQ(packet.Calls().back(), call);
        }
    }
    for (const IID& missing : {IID_ILarynthVoiceParams, IID_ILarynthParams}) {
        FakePacket packet;
        packet.ScriptQuery(missing, E_NOINTERFACE);
        expectRefused(packet);
        EXPECT_TRUE(packet.Calls().empty());
    }
    EXPECT_EQ(Code(source->SetParams(nullptr, GUID_NULL)), Code(E_FAIL));
    ExpectSamples(source, {3.0, -1.0, 2.0});
}

TEST(TTSVoicingSourceWave, ACloneIsSilentUntilItGetsAWaveform) {
    const Source source = LoadedSource();
    ExpectSamples(source, {3.0, -1.0});
    ComPtr<ITTSVoicingSource> clone;
    EXPECT_EQ(Code(source->Clone(clone.Id(), clone.PutUnknown())), Code(S_OK));
    EXPECT_EQ(source->AddRef(), 2U) << "the clone holds nothing of the original";
    source->Release();

    double last = kUntouched;
    EXPECT_EQ(Code(clone->GetOutputValue(&last)), Code(S_OK));
    EXPECT_NEAR(last, -kUnit, 1e-12);
    EXPECT_EQ(Code(clone->CalculateNext(&last)), Code(S_OK));
    EXPECT_EQ(last, 0.0);

    ComPtr<ITTSVoicingSourceWave> wave;
    ComPtr<IACLPersistProperties> properties;
    wave.Query(clone.Get());
    properties.Query(clone.Get());
    double OQ = kUntouched;
    EXPECT_EQ(Code(wave->GetOQ(&OQ)), Code(S_OK));
    EXPECT_EQ(OQ, 0.5);
    FakeSource pushed(kWave);
    EXPECT_EQ(Code(properties->LoadProperties(&pushed)), Code(S_OK));
    EXPECT_EQ(Code(wave->SetOQ(0.3)), Code(S_OK));
    // The original's pitch, amplitude and sample frequency, from the period's beginning.
    for (const double y : kWave) {
        EXPECT_EQ(Code(clone->CalculateNext(&last)), Code(S_OK));
        EXPECT_NEAR(last, y * kUnit, 1e-12);
    }
}

TEST(TTSVoicingSourceWave, CloningAndCopyingFail) {
    const Source source = LoadedSource();
    EXPECT_EQ(Code(source->Copy(nullptr)), Code(E_FAIL));
    EXPECT_EQ(Code(source->Copy(&source->Inner())), Code(E_FAIL));
    EXPECT_EQ(Code(source->Clone(IID_IUnknown, nullptr)), Code(E_POINTER));
    IUnknown* clone = &source->Inner();
    EXPECT_EQ(Code(source->Clone(IID_ITTSVoicingSourceStd, &clone)), Code(E_NOINTERFACE));
    EXPECT_EQ(clone, nullptr);
}

}  // namespace
}  // namespace larynth
