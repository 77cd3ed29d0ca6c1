// SPDX-License-Identifier: MIT
// What a voice does to the sound, measured on what the command renders.
#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

#include "tests/host/CommandFolder.h"

namespace larynth::test {
namespace {

// At 49 Hz a period is as long as the table of a wave-table source, 224 samples, and one more to wrap.
constexpr int kPeriod = 225;

// Both tracts let everything pass, and there is no noise: the output is the source, 20 periods of it.
constexpr char kTable[] =
    "F0,AV,AH,AF,FNP,BWNP,FNZ,BWNZ,PF6,PBW6,FrameLen\n"
    "49,800,0,0,0,0,0,0,0,0,4500\n";

std::string Wave(double first, double others) {
    std::string text = "\"wave\":[" + std::to_string(first);
    for (int i = 1; i < 112; ++i) text += "," + std::to_string(others);
    return text + "]";
}

// With an open quotient of 0.5 the table's entries are the waveform itself: one pulse a period,
// 800·sqrt(224).
const std::string kPulse = Wave(1, 0);
constexpr double kPulseHeight = 11973.0;

class VoiceSound : public testing::Test {
  protected:
    void SetUp() override { folder_.Write("t.csv", kTable); }

    // The last period.
    std::vector<int> Rendered(const std::string& voice, const std::string& options = "") const {
        folder_.Write("v.json", "{" + voice + "}");
        const CommandResult result = folder_.Run("larynth render t.csv -o o.raw --voice v.json " + options);
        EXPECT_EQ(result.status, 0) << result.err;
        const std::vector<int> samples = SamplesOf(folder_.Read("o.raw"));
        EXPECT_EQ(samples.size(), 20u * kPeriod);
        return {samples.end() - kPeriod, samples.end()};
    }

    CommandFolder folder_;
};

double MagnitudeAt(int harmonic, const std::vector<int>& period) {
    std::complex<double> sum;
    for (int n = 0; n < kPeriod; ++n) {
        const double angle = -2.0 * std::numbers::pi * harmonic * n / kPeriod;
        sum += static_cast<double>(period[static_cast<std::size_t>(n)]) * std::polar(1.0, angle);
    }
    return std::abs(sum);
}

// Gains at 0, 490, 2744 and 5488 Hz, computed from the designs' transfer functions. The low shelf raises 0 Hz
// by 3 and the high one the other end by 2, before either is scaled to its own unit power.
TEST_F(VoiceSound, PreEmphasisAndShelvesHaveTheGainsOfTheirDesign) {
    const std::string pre = R"(,"pre_emphasis":0.9)";
    const std::string low = R"(,"low_shelf":{"F":500,"G":3,"P3":0.66666666666666667})";
    const std::string high = R"(,"high_shelf":{"F":3000,"G":2,"P3":0.75,"P4":0})";
    const std::array<int, 4> harmonics = {0, 10, 56, 112};
    const struct {
        std::string settings;
        std::array<double, 4> gains;
    } rows[] = {
        {"", {1, 1, 1, 1}},
        {pre, {0.1000, 0.2824, 1.3407, 1.9000}},
        {low, {2.5999, 1.4260, 0.8786, 0.8666}},
        {high, {1.8242, 1.8268, 2.0162, 3.6491}},
        {pre + low + high, {0.4743, 0.7356, 2.3748, 6.0085}},
    };
    const std::vector<int> plain = Rendered(kPulse);
    EXPECT_EQ(std::count(plain.begin(), plain.end(), 0), kPeriod - 1);
    EXPECT_EQ(*std::max_element(plain.begin(), plain.end()), kPulseHeight);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.settings);
        const std::vector<int> filtered = Rendered(kPulse + row.settings);
        for (std::size_t i = 0; i < harmonics.size(); ++i) {
            // Truncation takes less than 1 from each sample: 225 in all, and 1 from the pulse itself.
            EXPECT_NEAR(MagnitudeAt(harmonics[i], filtered) / kPulseHeight, row.gains[i],
                        (kPeriod + row.gains[i]) / kPulseHeight)
                << "harmonic " << harmonics[i];
        }
    }
}

TEST_F(VoiceSound, TheOpenQuotientIsTheOpenShareOfThePeriodAtTheSamePower) {
    for (const double OQ : {0.25, 0.5, 0.8, 0.875}) {  // 112/OQ is whole
        SCOPED_TRACE(OQ);
        const std::vector<int> period =
            Rendered(Wave(1, 1) + ",\"open_quotient\":" + std::to_string(OQ), "--volume 10");
        const auto closed = std::count(period.begin(), period.end(), 0);
        EXPECT_NEAR(static_cast<double>(kPeriod - closed), 224 * OQ, 1);
        double power = 0.0;
        for (const int y : period) power += static_cast<double>(y) * y / kPeriod;
        // An entry more or less of the open ones, and the sample that the wrap adds.
        EXPECT_NEAR(power / (8000.0 * 8000.0), 1.0, 1 / (224 * OQ) + 1.0 / kPeriod);
    }
    const std::vector<int> silent = Rendered(Wave(1, 1) + ",\"open_quotient\":0.05");
    EXPECT_EQ(silent, std::vector<int>(kPeriod));
}

TEST_F(VoiceSound, ASourceThatIsNamedSoundsThroughTheVoicesFilters) {
    folder_.Write("w.txt", "0.5\n1\n0.25\n-1\n");
    const std::string pre = R"("pre_emphasis":0.5)";
    const std::vector<int> own = Rendered(pre + "," + kPulse);
    EXPECT_EQ(Rendered(pre + "," + kPulse, "--source standard"), own);
    const std::vector<int> named = Rendered(pre + "," + kPulse, "--source wave:w.txt");
    EXPECT_NE(named, own);
    EXPECT_EQ(named, Rendered(pre, "--source wave:w.txt"));
    EXPECT_NE(named, Rendered("", "--source wave:w.txt")) << "the voice's filter is there";
    EXPECT_EQ(Rendered(R"("wave":[0.5,1,0.25,-1],"open_quotient":0.5)"), Rendered("", "--source wave:w.txt"));
}

}  // namespace
}  // namespace larynth::test
