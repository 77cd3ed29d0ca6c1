// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <limits>
#include <vector>

#include <larynth/Larynth.h>

#include "host/ElementIndex.h"
#include "host/Errors.h"
#include "host/InputFile.h"
#include "host/OutputFile.h"
#include "host/StoredProperties.h"
#include "host/Voice.h"
#include "tests/host/CommandFolder.h"

namespace larynth::test {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

constexpr char kClass[] = "Larynth.TTSVoicingSourceWave";
const Waveform kWave = {0.1, -1.0 / 3.0, 5e-324, 1.7976931348623157e308, -0.0, 2.0};

class StoringProperties : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        ASSERT_EQ(LarynthLoadModule(LARYNTH_MODULE_DIR "/Larynth.so"), S_OK) << LarynthLastError();
    }

    static ComPtr<ITTSVoicingSource> NewSource() {
        ComPtr<ITTSVoicingSource> source;
        EXPECT_EQ(source.Create(CLSID_TTSVoicingSourceWave), S_OK);
        EXPECT_EQ(source->SetSampleFreq(22050.0), S_OK);
        return source;
    }

    static std::vector<double> Played(ITTSVoicingSource& source) {
        source.SetF0(120.0);
        source.SetVolume(1.0);
        std::vector<double> samples(400, 7.0);
        for (double& y : samples) source.CalculateNext(&y);
        return samples;
    }

    CommandFolder folder_;
};

TEST_F(StoringProperties, ASourceThatWasStoredInAFileSoundsTheSameWhenRestored) {
    Waveform wave;
    for (int i = 0; i < 100; ++i) wave.push_back(i / 99.0 * (1.0 - i / 60.0));
    const auto original = MakeWaveSource(wave, 22050.0);
    const std::string path = folder_.Path("source.json").string();
    OutputFile file(path);
    file.Write(StoredProperties::Of(original.Get()).ToText());
    file.Commit();

    const auto stored = StoredProperties::Parse(InputFile(path).ReadAll(), path);
    EXPECT_EQ(stored.ProgID(), kClass);
    EXPECT_THAT(stored.Values(), UnorderedElementsAre(Pair("Wave", wave)));
    const auto restored = NewSource();
    EXPECT_EQ(Played(*restored.Get()), std::vector<double>(400)) << "silent before";
    stored.LoadInto(restored.Get());
    const std::vector<double> samples = Played(*restored.Get());
    EXPECT_EQ(samples, Played(*original.Get()));
    EXPECT_NE(samples, std::vector<double>(400));
}

TEST_F(StoringProperties, EveryNumberComesBackToTheLastBit) {
    const StoredProperties stored(kClass, {{"Wave", kWave}, {"Unknown", {1.0}}, {"Empty", {}}});
    const auto read = StoredProperties::Parse(stored.ToText(), "p.json");
    EXPECT_EQ(read.Values(), stored.Values());
    const auto source = NewSource();
    read.LoadInto(source.Get());
    EXPECT_THAT(StoredProperties::Of(source.Get()).Values(), UnorderedElementsAre(Pair("Wave", kWave)))
        << "an object ignores what it does not know";
    EXPECT_THAT(StoredProperties::Of(NewSource().Get()).Values(),
                UnorderedElementsAre(Pair("Wave", Waveform{})));
}

TEST_F(StoringProperties, WhatCannotBeStoredOrRestoredIsAnError) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(StoredProperties(kClass, {{"Wave", {1.0, nan}}}).ToText(), std::runtime_error);
    ComPtr<ILarynthParams> packet;
    ASSERT_EQ(packet.Create(CLSID_LarynthParams), S_OK);
    EXPECT_THROW(StoredProperties::Of(packet.Get()), ComponentFailure);
    const StoredProperties stored(kClass, {{"Wave", kWave}});
    EXPECT_THROW(stored.LoadInto(packet.Get()), ComponentFailure);

    const auto source = NewSource();
    EXPECT_THROW(StoredProperties("Larynth.Other", {{"Wave", kWave}}).LoadInto(source.Get()),
                 std::runtime_error);
    EXPECT_THAT(StoredProperties::Of(source.Get()).Values(), UnorderedElementsAre(Pair("Wave", Waveform{})));
    source->SetSampleFreq(1e12);
    EXPECT_THROW(stored.LoadInto(source.Get()), ComponentFailure) << "no table is that long";
}

TEST_F(StoringProperties, AFileThatIsNotInTheFormatIsRefused) {
    const std::pair<const char*, const char*> rows[] = {
        {"{\"class\": \"A\"}", "p.json: expected an object with the key properties"},
        {"{\"properties\": {}}", "p.json: expected an object with the key class"},
        {"{\"class\": 1, \"properties\": {}}", "p.json: /class: expected a text"},
        {"{\"class\": \"A\", \"properties\": {\"Wave\": [\"x\"]}}", "p.json: /properties/Wave/0: expected"},
        {"{\"class\": \"A\", \"properties\": [1]}", "p.json: /properties: expected an object"},
        {"{\"class\": \"A\", \"properties\": {}, \"x\": 1}", "p.json: /x: expected one of the keys"},
        {"{", "p.json:1:2: expected JSON"},
    };
    for (const auto& [text, message] : rows) {
        try {
            StoredProperties::Parse(text, "p.json");
            ADD_FAILURE() << "was accepted: " << text;
        } catch (const BadInput& error) {
            EXPECT_THAT(error.what(), testing::StartsWith(message)) << text;
        }
    }
}

TEST(ElementIndex, TellsTheElementOfOneDimension) {
    const auto index = ComPtr<IACLPropertyIndex>::Adopt(new ElementIndex(5));
    int value = 0;
    EXPECT_EQ(index->SetIndex(0, 3), S_OK);
    EXPECT_EQ(index->GetIndex(0, &value), S_OK);
    EXPECT_EQ(value, 3);
    EXPECT_EQ(index->GetSize(0, &value), S_OK);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(index->GetDimensionCount(&value), S_OK);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(index->GetNameLength(0, &value), S_OK);
    EXPECT_EQ(value, 3);
    char name[4] = "";
    EXPECT_EQ(index->GetName(0, name), S_OK);
    EXPECT_STREQ(name, " , ");
    for (const HRESULT hr : {index->SetIndex(1, 0), index->SetSize(-1, 0), index->GetSize(1, &value),
                             index->SetDimensionCount(2), index->GetName(1, name)}) {
        EXPECT_EQ(hr, E_FAIL);
    }
    EXPECT_EQ(index->GetIndex(0, nullptr), E_POINTER);
}

}  // namespace
}  // namespace larynth::test
