// SPDX-License-Identifier: MIT
/// The source that plays a wave table, and the index by which it gets one.
#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "com/Create.h"
#include "components/PropertyIndex.h"
#include "components/TTSVoicingSourceWave.h"
#include "tests/support/BadPointer.h"
#include "tests/support/Code.h"
#include "tests/support/FakePacket.h"
#include "tests/support/Numbers.h"

namespace larynth::test {
namespace {

TEST(PropertyIndex, KeepsDimensionsWhenTheirNumberChanges) {
    PropertyIndex index;
    index.SetDimensionCount(2);
    index.SetSize(0, 100);
    index.SetIndex(0, -7);
    for (const int d : {0, 1}) EXPECT_EQ(Code(index.SetName(d, "name")), "S_OK");
    index.SetDimensionCount(1);
    EXPECT_EQ(Code(index.SetDimensionCount(65536)), "S_OK");
    for (const int refused : {-1, 65537})
        EXPECT_EQ(Code(index.SetDimensionCount(refused)), "E_FAIL") << refused;
    int count = -1, size = -1, current = -1, length = -1;
    char name[8] = "?";
    for (const HRESULT hr :
         {index.GetDimensionCount(&count), index.GetSize(0, &size), index.GetIndex(0, &current),
          index.GetNameLength(0, &length), index.GetName(0, name)})
        EXPECT_EQ(Code(hr), "S_OK");
    EXPECT_EQ((std::vector{count, size, current, length}), (std::vector{65536, 100, -7, 4}));
    EXPECT_STREQ(name, "name");
    index.GetName(1, name);
    EXPECT_STREQ(name, " , ");
}

TEST(PropertyIndex, RefusesDimensionsThatItDoesNotHaveAndPointersThatItCannotUse) {
    PropertyIndex index;
    index.SetDimensionCount(2);
    int value = 7;
    char buffer[8] = "?";
    for (const int d : {-1, 2}) {
        for (const HRESULT hr :
             {index.SetSize(d, 1), index.SetIndex(d, 1), index.SetName(d, nullptr), index.GetSize(d, &value),
              index.GetIndex(d, &value), index.GetNameLength(d, &value), index.GetName(d, buffer)})
            EXPECT_EQ(Code(hr), "E_FAIL") << d;
    }
    int* const bad = ReadOnly<int>();
    for (const HRESULT hr :
         {index.GetSize(2, bad), index.GetIndex(0, bad), index.GetNameLength(0, bad),
          index.GetDimensionCount(bad), index.SetName(0, nullptr), index.GetName(0, nullptr)})
        EXPECT_EQ(Code(hr), "E_POINTER");
}

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
    HRESULT LARYNTH_CALL AddProperty(IACLPersistProperties* pOwner, LPCSTR sName, const void*, LONG nType,
                                     LONG n5, LONG n6, LONG n7, IUnknown* pIndex) override {
        EXPECT_STREQ(sName, "Wave");
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
}

TEST_F(Wave, TakesElementsThatItCanPlace) {
    script.Return("announce", E_OUTOFMEMORY);
    script.Return("value", E_OUTOFMEMORY);  // neither is examined
    const std::tuple<const char*, int, int, const char*, Samples> rows[] = {
        {"wave", 0, 1, "S_OK", kWave},         {"Wave", 3, 4, "E_FAIL", kWave},
        {"Wave", -1, 3, "E_FAIL", kWave},      {"Wave", 0, -1, "E_FAIL", kWave},
        {"Wave", 0, INT_MAX, "E_FAIL", kWave}, {"Wave", 1, 99, "S_OK", {3, 9, 2}},
        {"Wave", 0, 4, "S_OK", {9, 9, 2, 0}},  {"Wave", 0, 2, "S_OK", {9, 9}}};  // element 0 fixes the length
    for (const auto& [name, index, size, result, wave] : rows) {
        SCOPED_TRACE(testing::Message() << name << ' ' << index << ' ' << size);
        EXPECT_EQ(Code(Set(source.get(), name, 9.0, index, size)), result);
        Container container(script, {});
        EXPECT_EQ(Code(source->DescribeProperties(&container)), "S_OK");
        EXPECT_EQ(container.wave, wave);
    }
}

TEST_F(Wave, RefusesPartnersThatItCannotUse) {
    Container holder(script, {});
    PropertyIndex index, empty;
    index.SetDimensionCount(1);
    index.SetIndex(0, 3);
    EXPECT_EQ(Code(source->GetPropertyValue(&holder, "Wave", 0, &index)), "E_FAIL");
    EXPECT_EQ(Code(source->GetPropertyValue(&holder, "WAVE", 0, &index)), "S_OK");
    IUnknown* const noIndex = static_cast<IACLValueHolder*>(&holder);
    for (IUnknown* bad : {static_cast<IUnknown*>(nullptr), noIndex, static_cast<IUnknown*>(&empty)}) {
        const char* const code = bad == noIndex ? "E_NOINTERFACE" : "E_FAIL";
        EXPECT_EQ(Code(source->GetPropertyValue(&holder, "Wave", 0, bad)), code);
        EXPECT_EQ(Code(source->SetPropertyValue(nullptr, "Wave", 0, &kUnit, 6, 0, 0, bad)), code);
    }
    for (const HRESULT bad : {source->DescribeProperties(nullptr), source->LoadProperties(nullptr)})
        EXPECT_EQ(Code(bad), "E_POINTER");
}

TEST_F(Wave, TheOpenQuotientIsAtMostNinetyFivePercentAndRebuildsAsLoadingDoes) {
    const std::tuple<double, double, Samples, double> rows[] = {
        {0.15, 0.15, {3.0, 2.0, 0.0, 0.0}, 1.1952286093343936},  // sqrt(20/14)
        {1.5, 0.95, {3.0, 1.8, 0.6, -0.6}, 0.4629100498862757},  // sqrt(3/14)
        {-1.0, -1.0, {0.0, 0.0}, 1.0},
        {kNan, 0.3, {3.0, -1.0, 2.0, 0.0}, kUnit}};
    for (const auto& [set, got, samples, unit] : rows) {
        SCOPED_TRACE(set);
        SetUp();
        double OQ = 7.0;
        EXPECT_EQ(Code(source->SetOQ(set)), std::isnan(set) ? "E_FAIL" : "S_OK");
        source->GetOQ(&OQ);
        EXPECT_EQ(OQ, got);
        ExpectSamples(samples, unit);
    }
    SetUp();
    source->SetSampleFreq(2 * kSampleFreq);
    char none[] = "/none/such", pipe[] = LARYNTH_TEST_DIR "/pipe";
    static_cast<void>(mkfifo(pipe, 0600));  // nobody writes to it
    const std::pair<char*, const char*> names[] = {
        {reinterpret_cast<char*>(1), "E_POINTER"}, {none, "S_OK"}, {pipe, "S_OK"}};
    for (const auto& [name, code] : names) EXPECT_EQ(Code(source->LoadFromTxt(name)), code);
    ExpectSamples({3.0, 1.0, -1.0, 0.5});  // nothing is read, but the table is rebuilt
    source->SetSampleFreq(kNan);
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

TEST_F(Wave, ACloneIsSilentUntilItGetsAWaveform) {
    ExpectSamples({3.0, -1.0});
    ComPtr<ITTSVoicingSourceWave> clone;
    EXPECT_EQ(Code(source->Clone(clone.Id(), clone.PutUnknown())), "S_OK");
    source.reset(static_cast<TTSVoicingSourceWave*>(clone.Detach()));
    double last = 7.0;
    EXPECT_EQ(Code(source->GetOutputValue(&last)), "S_OK");
    EXPECT_NEAR(last, -kUnit, 1e-12);
    ExpectSamples({0.0});
    Load(*source, kWave);
    source->SetOQ(0.3);
    ExpectSamples(kWave);  // the original's frequencies and amplitude, from the period's beginning
}

}  // namespace
}  // namespace larynth::test
