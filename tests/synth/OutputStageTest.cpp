// SPDX-License-Identifier: MIT
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <random>
#include <vector>

#include "synth/OutputStage.h"
#include "tests/support/Allocations.h"

namespace larynth {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ToSample, TruncatesTowardZeroAndKeepsTheLow16Bits) {
    const struct {
        double value;
        std::int16_t sample;
    } rows[] = {
        {0.0, 0},
        {0.999, 0},
        {-1.9, -1},
        {32767.9, 32767},
        {32768.0, -32768},
        {40000.7, -25536},
        {-32769.0, 32767},
        {65536.0, 0},
        {4294967297.5, 1},
        {9223372036854774784.0, -1024},
        {9223372036854775808.0, 0},
        {-9223372036854775808.0, 0},
        {1e300, 0},
        {kInfinity, 0},
        {kNan, 0},
    };
    for (const auto& row : rows) EXPECT_EQ(ToSample(row.value), row.sample) << row.value;
}

TEST(OutputStage, ScalesThenEmphasisesThenSetsTheVolume) {
    OutputStage stage;
    stage.outputGain = 10.0;
    stage.preEmphasis = 0.5;
    stage.volume = 3.0;
    EXPECT_EQ(stage.Process(1.0), 30);  // 3·(10 − 0.5·0)
    EXPECT_EQ(stage.Process(2.0), 45);  // 3·(20 − 0.5·10)
    stage.volume = -1.0;
    EXPECT_EQ(stage.Process(0.0), 10);  // −(0 − 0.5·20)
}

ShelfSettings Shelf(double G, double F) { return {.G = G, .F = F, .P3 = (1.0 + 1.0 / G) / 2.0, .P4 = 0.0}; }

/// The level of the tail of a long sine, relative to the input.
double GainAt(OutputStage& stage, double omega) {
    double peak = 0.0;
    for (int n = 0; n < 8000; ++n) {
        const double y = stage.Process(1000.0 * std::cos(omega * n));
        if (n > 6000) peak = std::fmax(peak, std::fabs(y));
    }
    return peak / 1000.0;
}

TEST(OutputStage, RunsAShelfOnlyWhileItsGainExceedsOne) {
    for (double gain : {0.5, 1.0}) {
        OutputStage stage;
        stage.SetShelves({.G = gain, .F = 300.0, .P3 = 0.7, .P4 = 0.0}, ShelfSettings{});
        stage.SetSampleFreq(11025.0);
        EXPECT_EQ(stage.Process(1000.0), 1000) << gain;
    }
    OutputStage stage;
    stage.SetShelves(Shelf(4.0, 300.0), ShelfSettings{});
    EXPECT_EQ(stage.Process(1000.0), 1000) << "without a sample frequency nothing is designed";
    stage.SetSampleFreq(11025.0);
    const double low = GainAt(stage, 0.0), high = GainAt(stage, 3.14159265);
    EXPECT_NEAR(low / high, 4.0, 0.02);
}

TEST(OutputStage, HighShelfLiftsTheTopOfTheBand) {
    OutputStage stage;
    stage.SetSampleFreq(16000.0);
    stage.SetShelves(ShelfSettings{}, Shelf(3.0, 3000.0));
    const double low = GainAt(stage, 0.0), high = GainAt(stage, 3.14159265);
    EXPECT_NEAR(high / low, 3.0, 0.02);
}

/// A stretch is cut at once unless it holds a value too large for that: the samples must not depend on how
/// sums are put together.
TEST(OutputStage, StretchesGiveTheSamplesOfSingleValues) {
    const struct {
        const char* what;
        double gain, volume, preEmphasis, shelfGain;
        std::vector<double> oddities;
    } rows[] = {{"plain", 0.9, 1.1, 0.0, 1.0, {}},
                {"beyond 16 bits", 3.0, 7.7, 0.95, 1.0, {}},
                {"shelves", 1.0, 5.0, -0.6, 2.5, {}},
                {"beyond 32 bits", 1.5, 1.0, 0.9, 1.0, {2e9, -3e9, 1e18, 1e300}},
                {"beyond 32 bits, shelves", 1.0, -1.0, 0.9, 3.0, {2e9, -1e12}},
                {"numbers that are none", 1.0, 1.0, 0.5, 1.0, {kNan, kInfinity, -kInfinity}}};
    std::mt19937 random(11);
    std::uniform_real_distribution<double> sound(-40000.0, 40000.0);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        OutputStage stretches, single;
        for (OutputStage* const stage : {&stretches, &single}) {
            stage->outputGain = row.gain;
            stage->volume = row.volume;
            stage->preEmphasis = row.preEmphasis;
            stage->SetShelves(Shelf(row.shelfGain, 300.0), Shelf(row.shelfGain, 3000.0));
            stage->SetSampleFreq(11025.0);
        }
        for (int k = 0; k < 200; ++k) {
            std::vector<double> sums(random() % 70);
            for (double& sum : sums) sum = sound(random);
            if (!row.oddities.empty() && !sums.empty() && k % 3 == 0) {
                sums[random() % sums.size()] = row.oddities[random() % row.oddities.size()];
            }
            std::vector<std::int16_t> samples(sums.size()), expected;
            for (const double sum : sums) expected.push_back(single.Process(sum));
            stretches.Process(sums, samples.data());
            ASSERT_EQ(samples, expected) << "stretch " << k;
        }
    }
}

TEST(OutputStage, ANewDesignClearsTheFilters) {
    const auto rendered = [](bool excitedBefore) {
        OutputStage stage;
        stage.SetShelves(Shelf(2.0, 500.0), ShelfSettings{});
        stage.SetSampleFreq(11025.0);
        if (excitedBefore) stage.Process(30000.0);
        stage.SetSampleFreq(22050.0);
        return stage.Process(0.0) == 0 && stage.Process(0.0) == 0;
    };
    EXPECT_TRUE(rendered(false));
    EXPECT_TRUE(rendered(true));

    OutputStage same;
    same.SetShelves(Shelf(2.0, 500.0), ShelfSettings{});
    same.SetSampleFreq(11025.0);
    same.Process(30000.0);
    same.SetSampleFreq(11025.0);
    EXPECT_NE(same.Process(0.0), 0) << "the same frequency keeps design and state";
}

TEST(OutputStage, ADesignThatRunsOutOfMemoryChangesNothing) {
    for (const bool byFrequency : {true, false}) {
        const auto designed = [](double gain, double fs) {
            OutputStage stage;
            stage.SetShelves(Shelf(gain, 300.0), Shelf(gain, 3000.0));
            stage.SetSampleFreq(fs);
            return stage;
        };
        const double gain = byFrequency ? 2.0 : 4.0, fs = byFrequency ? 22050.0 : 11025.0;
        OutputStage stage = designed(2.0, 11025.0), kept = stage, after = designed(gain, fs);
        const auto design = [&] {
            if (byFrequency) return stage.SetSampleFreq(fs);
            stage.SetShelves(Shelf(gain, 300.0), Shelf(gain, 3000.0));
        };
        int failures = 0;
        for (bool failed = true; failed; failures += failed ? 1 : 0) {
            const AllocationFailure noMemory(failures + 1);
            try {
                design();
                failed = false;
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(stage.LowShelf().G, 2.0);
                EXPECT_EQ(stage.Process(1000.0), kept.Process(1000.0)) << "failure " << failures;
            }
        }
        EXPECT_GT(failures, 4);
        EXPECT_EQ(stage.Process(1000.0), after.Process(1000.0));
    }
}

}  // namespace
}  // namespace larynth
