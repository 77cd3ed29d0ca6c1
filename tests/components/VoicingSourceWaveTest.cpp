// SPDX-License-Identifier: MIT
#include <climits>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <sys/mman.h>
#include <sys/stat.h>

#include <larynth/Classes.h>

#include "com/Create.h"
#include "components/PropertyIndex.h"
#include "components/TTSVoicingSourceWave.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"

namespace larynth::test {
namespace {

using Samples = std::vector<double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Ten entries a reference period; F0 = 49 plays one of them a sample, and none of the tests goes round.
constexpr double kSampleFreq = 490.0;

/// With an open quotient of 0.3 this is the beginning of the table, up to the factor kUnit, and 0 follows.
const Samples kWave = {3.0, -1.0, 2.0};
constexpr double kUnit = 0.8451542547285166;  // sqrt(10/14)

HRESULT Set(IACLPersistProperties* target, LPCSTR name, const double& value, int i, int size) {
    PropertyIndex index;
    index.SetDimensionCount(1);
    index.SetIndex(0, i);
    index.SetSize(0, size);
    return target->SetPropertyValue(nullptr, name, 0, &value, 6, 0, 0, &index);
}

/// A container's side of the property protocol: pushes `wave`, and fetches what is announced into it.
class Container final : public Fake<IACLPropertySource, IACLPropertySink, IACLValueHolder> {
  public:
    Container(Script& told, Samples pushed) : Fake(told), wave(std::move(pushed)) {}

    HRESULT LARYNTH_CALL PushProperties(IACLPersistProperties* pTarget) override {
        int i = 0;
        for (const double& value : wave)
            EXPECT_EQ(Code(Set(pTarget, "Wave", value, i++, static_cast<int>(wave.size()))), "S_OK");
        return script.Next("push");
    }
    HRESULT LARYNTH_CALL AddProperty(IACLPersistProperties* pOwner, LPCSTR sName, const void* pValue,
                                     LONG nType, LONG n5, LONG n6, LONG n7, IUnknown* pIndex) override {
        EXPECT_STREQ(sName, "Wave");
        EXPECT_EQ(pValue, nullptr);
        EXPECT_EQ((std::vector<LONG>{nType, n5, n6, n7}), (std::vector<LONG>{6, 0, 0, 0}));
        auto* const index = static_cast<IACLPropertyIndex*>(pIndex);
        int size = -1;
        index->GetSize(0, &size);
        wave.clear();
        for (int i = 0; i < size; ++i) {
            index->SetIndex(0, i);
            pOwner->GetPropertyValue(this, sName, 0, index);
        }
        return script.Next("announce");
    }
    HRESULT LARYNTH_CALL Reserved3() override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetValue(const void* pValue, LONG nType) override {
        EXPECT_EQ(nType, 6);
        wave.push_back(*static_cast<const double*>(pValue));
        return script.Next("value");
    }

    Samples wave;
};

class Wave : public testing::Test {
  protected:
    void SetUp() override {
        source = MakeObject<TTSVoicingSourceWave>();
        source->SetSampleFreq(kSampleFreq);
        source->SetF0(49.0);
        source->SetVolume(1.0);
        EXPECT_EQ(Code(Load(*source, kWave)), "S_OK");
        EXPECT_EQ(Code(source->SetOQ(0.3)), "S_OK");
    }

    HRESULT Load(IACLPersistProperties& target, const Samples& wave) {
        return target.LoadProperties(&*std::make_unique<Container>(script, wave));
    }
    void ExpectSamples(const Samples& expected, double unit = kUnit) {
        for (const double y : expected) {
            double sample = 7.0;
            EXPECT_EQ(Code(source->CalculateNext(&sample)), "S_OK");
            EXPECT_NEAR(sample, y * unit, 1e-12);
        }
    }

    Script script;
    Created<TTSVoicingSourceWave> source;
};

TEST_F(Wave, PlaysWhatAContainerPushed) {
    script.Return("push", E_OUTOFMEMORY);
    EXPECT_EQ(Code(Load(*source, {5.0})), "E_OUTOFMEMORY") << "the source's result; the table is rebuilt";
    ExpectSamples({5.0}, 0.3464101615137755);  // sqrt(3/25): one sample in a period of three
    CLSID id{};
    LPCSTR name = "";
    for (const HRESULT hr : {source->GetClassID(&id), source->GetProgID(&name)}) EXPECT_EQ(Code(hr), "S_OK");
    EXPECT_EQ(id, CLSID_TTSVoicingSourceWave);
    EXPECT_STREQ(name, "Larynth.TTSVoicingSourceWave");
}

TEST_F(Wave, TakesElementsThatItCanPlace) {
    script.Return("announce", E_OUTOFMEMORY);
    script.Return("value", E_OUTOFMEMORY);  // neither is examined
    const struct {
        const char* name;
        int index, size;
        const char* result;
        Samples wave;
    } rows[] = {
        {"wave", 0, 1, "S_OK", kWave},         {"Wave", 3, 4, "E_FAIL", kWave},
        {"Wave", -1, 3, "E_FAIL", kWave},      {"Wave", 0, -1, "E_FAIL", kWave},
        {"Wave", 0, INT_MAX, "E_FAIL", kWave}, {"Wave", 1, 99, "S_OK", {3, 9, 2}},
        {"Wave", 0, 4, "S_OK", {9, 9, 2, 0}},  {"Wave", 0, 2, "S_OK", {9, 9}}};  // element 0 fixes the length
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.name << ' ' << row.index << ' ' << row.size);
        EXPECT_EQ(Code(Set(source.get(), row.name, 9.0, row.index, row.size)), row.result);
        Container container(script, {});
        EXPECT_EQ(Code(source->DescribeProperties(&container)), "S_OK");
        EXPECT_EQ(container.wave, row.wave);
    }
}

TEST_F(Wave, RefusesPartnersThatItCannotUse) {
    Container holder(script, {});
    PropertyIndex index, empty;
    index.SetDimensionCount(1);
    index.SetIndex(0, 3);
    EXPECT_EQ(Code(source->GetPropertyValue(&holder, "Wave", 0, &index)), "E_FAIL");
    EXPECT_EQ(Code(source->GetPropertyValue(&holder, "WAVE", 0, &index)), "S_OK");
    EXPECT_TRUE(holder.wave.empty());
    IUnknown* const noIndex = static_cast<IACLValueHolder*>(&holder);
    for (IUnknown* bad : {static_cast<IUnknown*>(nullptr), noIndex, static_cast<IUnknown*>(&empty)}) {
        const char* const code = bad == noIndex ? "E_NOINTERFACE" : "E_FAIL";
        EXPECT_EQ(Code(source->GetPropertyValue(&holder, "Wave", 0, bad)), code);
        EXPECT_EQ(Code(source->SetPropertyValue(nullptr, "Wave", 0, &kUnit, 6, 0, 0, bad)), code);
    }
    index.SetIndex(0, 0);
    index.SetSize(0, 3);
    for (const HRESULT bad : {source->SetPropertyValue(nullptr, nullptr, 0, nullptr, 6, 0, 0, &index),
                              source->GetPropertyValue(nullptr, "Wave", 0, &index)})
        EXPECT_EQ(Code(bad), "E_FAIL");
    for (const HRESULT bad : {source->DescribeProperties(nullptr), source->LoadProperties(nullptr)})
        EXPECT_EQ(Code(bad), "E_POINTER");
}

TEST_F(Wave, TheOpenQuotientIsAtMostNinetyFivePercentAndRebuildsAsLoadingDoes) {
    const struct {
        double set, got;
        Samples samples;
        double unit;
    } rows[] = {{0.15, 0.15, {3.0, 2.0, 0.0, 0.0}, 1.1952286093343936},  // sqrt(20/14)
                {1.5, 0.95, {3.0, 1.8, 0.6, -0.6}, 0.4629100498862757},  // sqrt(3/14)
                {-1.0, -1.0, {0.0, 0.0}, 1.0},
                {kNan, 0.3, {3.0, -1.0, 2.0, 0.0}, kUnit}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.set);
        SetUp();
        double OQ = 7.0;
        EXPECT_EQ(Code(source->SetOQ(row.set)), std::isnan(row.set) ? "E_FAIL" : "S_OK");
        source->GetOQ(&OQ);
        EXPECT_EQ(OQ, row.got);
        ExpectSamples(row.samples, row.unit);
    }
    SetUp();
    source->SetSampleFreq(2 * kSampleFreq);
    constexpr std::size_t kPage = 1 << 16;
    void* const pages = mmap(nullptr, 2 * kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_EQ(munmap(static_cast<char*>(pages) + kPage, kPage), 0);
    auto* const page = static_cast<char*>(std::memset(pages, 'a', kPage));
    char none[] = "/none/such", pipe[] = LARYNTH_TEST_DIR "/pipe";
    static_cast<void>(mkfifo(pipe, 0600));  // nobody writes to it
    const std::pair<char*, const char*> names[] = {{reinterpret_cast<char*>(1), "E_POINTER"},
                                                   {page + kPage - 9, "E_POINTER"},
                                                   {page, "S_OK"},  // too long for a name
                                                   {none, "S_OK"},
                                                   {pipe, "S_OK"}};
    for (const auto& [name, code] : names) EXPECT_EQ(Code(source->LoadFromTxt(name)), code);
    munmap(pages, kPage);
    ExpectSamples({3.0, 1.0, -1.0, 0.5});  // nothing is read, but the table is rebuilt
    source->SetSampleFreq(kNan);
    EXPECT_EQ(Code(source->LoadFromTxt(nullptr)), "E_FAIL");
    EXPECT_EQ(Code(Load(*source, kWave)), "E_FAIL");
}

TEST_F(Wave, WithoutAPitchNothingHappens) {
    double sample = 7.0;
    source->SetF0(0.0);
    EXPECT_EQ(Code(source->CalculateNext(&sample)), "S_OK");
    EXPECT_EQ(Code(source->GetOutputValue(&sample)), "E_FAIL");
    EXPECT_EQ(sample, 7.0);
    source->SetF0(49.0);
    ExpectSamples(kWave);
}

TEST_F(Wave, TakesAFrameWholeOrNotAtAll) {
    const std::map<std::string, double> values = {{"SampleFreq", kSampleFreq}, {"AV", 2}, {"F0", 98}};
    for (const char* call : {"SampleFreq", "AV", "F0"}) {
        Script failing;
        failing.Return(call, S_FALSE);
        EXPECT_EQ(Code(source->SetParams(FakePacket(failing, values).Unknown(), GUID_NULL)), "E_FAIL");
    }
    ExpectSamples({3.0, -1.0});
    Script taken;
    taken.ReturnFromQuery(IID_ILarynthParams, S_FALSE);
    EXPECT_EQ(Code(source->SetParams(FakePacket(taken, values).Unknown(), GUID_NULL)), "S_FALSE");
    ExpectSamples({4.0, 0.0});
}

TEST_F(Wave, ACloneIsSilentUntilItGetsAWaveform) {
    ExpectSamples({3.0, -1.0});
    IUnknown* none = &source->Inner();
    EXPECT_EQ(Code(source->Clone(IID_ITTSVoicingSourceStd, &none)), "E_NOINTERFACE");
    EXPECT_EQ(none, nullptr);
    ComPtr<ITTSVoicingSourceWave> clone;
    EXPECT_EQ(Code(source->Clone(clone.Id(), clone.PutUnknown())), "S_OK");
    source.reset(static_cast<TTSVoicingSourceWave*>(clone.Detach()));
    double last = 7.0;
    EXPECT_EQ(Code(source->GetOutputValue(&last)), "S_OK");
    EXPECT_NEAR(last, -kUnit, 1e-12);
    source->GetOQ(&last);
    EXPECT_EQ(last, 0.5);
    ExpectSamples({0.0});
    Load(*source, kWave);
    source->SetOQ(0.3);
    ExpectSamples(kWave);  // the original's frequencies and amplitude, from the period's beginning
}

}  // namespace
}  // namespace larynth::test
