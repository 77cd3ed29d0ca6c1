// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/host/CommandFolder.h"

namespace larynth::test {
namespace {

const std::filesystem::path kData = LARYNTH_GOLDEN_DIR;

using Position = std::pair<long, std::string>;  // sample, text

struct GoldenCase {
    std::string name, input, expected;
    std::vector<std::string> options;
    std::size_t samples;
    std::vector<Position> markers;
};

void PrintTo(const GoldenCase& row, std::ostream* stream) { *stream << row.name; }

GoldenCase CaseOf(const nlohmann::json& row) {
    return {row.at("name"),    row.at("input"),   row.at("expected"),
            row.at("options"), row.at("samples"), row.at("markers").get<std::vector<Position>>()};
}

std::vector<GoldenCase> AllCases() {
    std::vector<GoldenCase> cases;
    std::ifstream file(kData / "index.json");
    const auto index = nlohmann::json::parse(file);
    for (const auto& row : index.at("cases")) cases.push_back(CaseOf(row));
    return cases;
}

std::string CommandLine(const GoldenCase& row, const CommandFolder& folder) {
    std::string line = "cd '" + kData.string() + "' && larynth render " + row.input;
    for (const std::string& option : row.options) line += " '" + option + "'";
    return line + " -o " + folder.Path("out.raw").string() + " --labels " + folder.Path("labels").string();
}

struct LabelLine {
    double start, end;  // seconds
    std::string text;
};

std::vector<LabelLine> LabelsOf(const std::string& content) {
    std::vector<LabelLine> labels;
    std::istringstream lines(content);
    for (std::string start, end, text;
         std::getline(std::getline(std::getline(lines, start, '\t'), end, '\t'), text);) {
        labels.push_back({std::stod(start), std::stod(end), text});
    }
    return labels;
}

class Golden : public testing::TestWithParam<GoldenCase> {};

TEST_P(Golden, GivesTheExpectedSamplesAndMarkers) {
    const GoldenCase& row = GetParam();
    const CommandFolder folder;
    const CommandResult result = folder.Run(CommandLine(row, folder));
    ASSERT_EQ(result.status, 0) << result.err;

    const std::vector<int> got = SamplesOf(folder.Read("out.raw"));
    const std::vector<int> expected = SamplesOf(FileContent(kData / row.expected));
    ASSERT_EQ(expected.size(), row.samples);
    ASSERT_EQ(got.size(), expected.size());
    const auto [differs, wanted] = std::mismatch(got.begin(), got.end(), expected.begin());
    EXPECT_TRUE(differs == got.end()) << "first difference at sample " << differs - got.begin() << ": got "
                                      << *differs << ", expected " << *wanted;

    std::vector<Position> markers;
    const std::vector<LabelLine> labels = LabelsOf(folder.Read("labels"));
    for (const LabelLine& label : labels) {
        const double sampleFreq = static_cast<double>(row.samples) / labels.back().end;
        markers.emplace_back(std::lround(label.start * sampleFreq), label.text);
    }
    EXPECT_EQ(markers, row.markers);
}

INSTANTIATE_TEST_SUITE_P(Cases, Golden, testing::ValuesIn(AllCases()),
                         [](const auto& test) { return test.param.name; });

TEST(GoldenIndex, HasThirtyThreeCases) { EXPECT_EQ(AllCases().size(), 33u); }

}  // namespace
}  // namespace larynth::test
