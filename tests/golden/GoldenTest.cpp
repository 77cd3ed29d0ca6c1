// SPDX-License-Identifier: MIT
#include <algorithm>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "host/Files.h"
#include "host/command/RenderInput.h"
#include "input/Text.h"
#include "tests/support/ForwardingOuter.h"

namespace larynth {
namespace {

using Position = std::pair<std::size_t, std::string>;  // sample, text

struct GoldenCase {
    std::string name, input, kind, expected;
    std::vector<std::string> options;  // of `larynth render`: names and values
    std::size_t samples;
    std::vector<Position> markers;
};

void PrintTo(const GoldenCase& row, std::ostream* stream) { *stream << row.name; }

std::string Content(const std::string& name) {
    return InputFile(LARYNTH_GOLDEN_DIR "/" + name).ReadAll(1 << 20);
}

std::vector<GoldenCase> AllCases() {
    std::vector<GoldenCase> cases;
    const auto index = nlohmann::json::parse(Content("index.json"));
    for (const auto& row : index.at("cases")) {
        cases.push_back({row.at("name"), row.at("input"), row.at("kind"), row.at("expected"),
                         row.at("options"), row.at("samples"), row.at("markers")});
    }
    return cases;
}

std::unique_ptr<RenderInput> InputOf(const GoldenCase& row, std::istream& input) {
    if (row.kind == "packets") return std::make_unique<PacketInput>(input, row.input, std::nullopt);
    return std::make_unique<FrameInput>(FrameReader(input, row.input));
}

SynthesizerSettings SettingsOf(const GoldenCase& row) {
    SynthesizerSettings settings{.seed = 1};
    for (std::size_t i = 0; i + 1 < row.options.size(); i += 2) {
        const std::string& option = row.options[i];
        const std::string& value = row.options[i + 1];
        if (option == "--volume") settings.volume = ParseNumber(value).value();
        if (option == "--output-gain") settings.outputGain = ParseNumber(value).value();
        if (option == "--seed") settings.seed = static_cast<std::uint32_t>(std::stoul(value));
        if (option == "--tract") settings.tract = TractForm::Filter;
        if (option == "--voice") settings.voice = ParseVoice(Content(value), value);
        if (option == "--source") {
            std::istringstream file(Content(value.substr(std::string("wave:").size())));
            settings.wave = ParseWaveform(file, value);
        }
    }
    return settings;
}

/// With a part of something foreign among the components a sample is computed through the interfaces, else in
/// vectors.
enum class Path { Vectors, Samples };

class Golden : public testing::TestWithParam<std::tuple<GoldenCase, Path>> {};

TEST_P(Golden, GivesTheExpectedSamplesAndMarkers) {
    const auto& [row, path] = GetParam();
    std::istringstream input(Content(row.input)), again(input.str());
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

    const std::string bytes = Content(row.expected);
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
                         testing::Combine(testing::ValuesIn(AllCases()),
                                          testing::Values(Path::Vectors, Path::Samples)),
                         NameOf);

TEST(GoldenIndex, HasThirtyThreeCases) { EXPECT_EQ(AllCases().size(), 33U); }

}  // namespace
}  // namespace larynth
