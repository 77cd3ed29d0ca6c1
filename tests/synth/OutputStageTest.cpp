// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <new>

#include "synth/OutputStage.h"
#include "tests/support/Allocations.h"

namespace larynth {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Cut {
    double value;
    std::int16_t sample;
};

constexpr Cut kCuts[] = {
    {0.0, 0},          {0.999, 0},        {-1.9, -1},   {32767.9, 32767},  {32768.0, -32768},
    {40000.7, -25536}, {-32769.0, 32767}, {65536.0, 0}, {4294967297.5, 1}, {0x1p63 - 1024.0, -1024},
    {0x1p63, 0},       {-0x1p63, 0},      {1e300, 0},   {kInfinity, 0},    {kNan, 0}};

// What a processor makes of a number that no integer holds differs; a constant expression refuses it.
static_assert(std::ranges::all_of(kCuts, [](const Cut& cut) { return ToSample(cut.value) == cut.sample; }));

TEST(ToSample, TruncatesTowardZeroAndKeepsTheLow16Bits) {
    for (const Cut& cut : kCuts) EXPECT_EQ(ToSample(cut.value), cut.sample) << cut.value;
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

/// The level of a long sine's tail, relative to the input, at the low end of the band over that at the high.
double LowOverHigh(OutputStage& stage) {
    double peaks[] = {0.0, 0.0};
    for (const int end : {0, 1}) {
        for (int n = 0; n < 8000; ++n) {
            const double y = stage.Process(end == 0 || n % 2 == 0 ? 1000.0 : -1000.0);
            if (n > 6000) peaks[end] = std::fmax(peaks[end], std::fabs(y));
        }
    }
    return peaks[0] / peaks[1];
}

TEST(OutputStage, RunsAShelfOnlyWhileItsGainExceedsOne) {
    for (double gain : {0.5, 1.0}) {
        OutputStage stage;
        stage.SetShelves({.G = gain, .F = 300.0, .P3 = 0.7, .P4 = 0.0}, ShelfSettings{});
        stage.SetSampleFreq(11025.0);
        EXPECT_EQ(stage.Process(1000.0), 1000) << gain;
    }
    OutputStage low, high;
    low.SetShelves(Shelf(4.0, 300.0), ShelfSettings{});
    EXPECT_EQ(low.Process(1000.0), 1000) << "without a sample frequency nothing is designed";
    low.SetSampleFreq(11025.0);
    EXPECT_NEAR(LowOverHigh(low), 4.0, 0.02);
    high.SetSampleFreq(16000.0);
    high.SetShelves(ShelfSettings{}, Shelf(3.0, 3000.0));
    EXPECT_NEAR(LowOverHigh(high), 1 / 3.0, 0.02);
}

TEST(OutputStage, OnlyANewDesignClearsTheFilters) {
    for (const double next : {11025.0, 22050.0}) {
        OutputStage stage;
        stage.SetShelves(Shelf(2.0, 500.0), ShelfSettings{});
        stage.SetSampleFreq(11025.0);
        stage.Process(30000.0);
        stage.SetSampleFreq(next);
        EXPECT_EQ(stage.Process(0.0) == 0, next != 11025.0) << next;
    }
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
