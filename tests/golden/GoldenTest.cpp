// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/golden/GoldenCase.h"
#include "tests/support/ForwardingOuter.h"

namespace larynth {

void PrintTo(const GoldenCase& row, std::ostream* stream) { *stream << row.name; }

namespace {

/// With a part of something foreign among the components a sample is computed through the interfaces, else in
/// vectors.
enum class Path { Vectors, Samples };

class Golden : public testing::TestWithParam<std::tuple<GoldenCase, Path>> {};

TEST_P(Golden, GivesTheExpectedSamplesAndMarkers) {
    const auto& [row, path] = GetParam();
    std::istringstream input(GoldenFile(row.input)), again(input.str());
    ForwardingOuter outer;
    SynthesizerSettings settings = SettingsOf(row);
    settings.sampleFreq = ExtentOf(*InputOf(row, input)).sampleFreq;
    Synthesizer synthesizer(settings);
    if (path == Path::Samples) {
        ASSERT_EQ(outer.part.Create(CLSID_TTSAspirationSource, &outer), S_OK);
        synthesizer.PlugIn(&outer, IID_ITTSAspirationSource);
    }
    std::vector<short> samples;
    std::vector<Position> markers;
    for (const auto frames = InputOf(row, again); frames->Next();) {
        if (!frames->Marker().empty()) markers.emplace_back(samples.size(), frames->Marker());
        const std::span<const std::int16_t> rendered = frames->Render(synthesizer);
        samples.insert(samples.end(), rendered.begin(), rendered.end());
    }

    const std::string bytes = GoldenFile(row.expected);
    ASSERT_EQ(bytes.size(), 2 * row.samples);
    ASSERT_EQ(samples.size(), row.samples);
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(bytes[k]); };
    for (std::size_t i = 0; i < row.samples; ++i) {
        ASSERT_EQ(samples[i], static_cast<short>(byte(2 * i + 1) << 8 | byte(2 * i))) << "sample " << i;
    }
    EXPECT_EQ(markers, row.markers);
}

std::string NameOf(const testing::TestParamInfo<Golden::ParamType>& test) {
    const auto& [row, path] = test.param;
    return row.name + (path == Path::Vectors ? "_vectors" : "_samples");
}

INSTANTIATE_TEST_SUITE_P(Cases, Golden,
                         testing::Combine(testing::ValuesIn(GoldenCases()),
                                          testing::Values(Path::Vectors, Path::Samples)),
                         NameOf);

TEST(GoldenIndex, HasThirtyThreeCases) { EXPECT_EQ(GoldenCases().size(), 33U); }

}  // namespace
}  // namespace larynth
