// SPDX-License-Identifier: MIT
#include <algorithm>
#include <gtest/gtest.h>
#include <new>

#include "synth/OutputStage.h"
#include "tests/support/Allocations.h"
#include "tests/support/Numbers.h"

namespace larynth {
namespace {

constexpr std::pair<double, std::int16_t> kCuts[] = {
    {0.0, 0},          {0.999, 0},        {-1.9, -1},   {32767.9, 32767},  {32768.0, -32768},
    {40000.7, -25536}, {-32769.0, 32767}, {65536.0, 0}, {4294967297.5, 1}, {0x1p63 - 1024.0, -1024},
    {0x1p63, 0},       {-0x1p63, 0},      {1e300, 0},   {kInfinity, 0},    {kNan, 0}};

// Toward zero, and the low 16 bits. What a processor makes of a number that no integer holds differs; a
// constant expression refuses it.
static_assert(std::ranges::all_of(kCuts, [](const auto& cut) { return ToSample(cut.first) == cut.second; }));

ShelfSettings Shelf(double G, double F) { return {.G = G, .F = F, .P3 = (1.0 + 1.0 / G) / 2.0, .P4 = 0.0}; }

TEST(OutputStage, OnlyANewDesignClearsAShelfWhichRunsWhileItsGainExceedsOne) {
    for (const auto& [gain, next] :
         {std::pair(0.5, 11025.0), {1.0, 11025.0}, {2.0, 11025.0}, {2.0, 22050.0}}) {
        OutputStage stage;
        stage.SetShelves(Shelf(gain, 500.0), ShelfSettings{});
        stage.SetSampleFreq(11025.0);
        EXPECT_EQ(stage.Process(30000.0) == 30000, gain <= 1.0) << gain;
        stage.SetSampleFreq(next);
        EXPECT_EQ(stage.Process(0.0) == 0, gain <= 1.0 || next != 11025.0) << gain << ' ' << next;
    }
}

TEST(OutputStage, ADesignThatRunsOutOfMemoryChangesNothing) {
    OutputStage stage;
    stage.SetShelves(Shelf(2.0, 300.0), Shelf(2.0, 3000.0));
    stage.SetSampleFreq(11025.0);
    OutputStage next = stage;
    next.SetSampleFreq(22050.0);
    const std::int16_t nextSample = next.Process(1000.0);
    for (const bool byFrequency : {true, false}) {
        int failures = 0;
        for (bool failed = true; failed; failures += failed ? 1 : 0) {
            OutputStage changed = stage;
            const AllocationFailure noMemory(failures + 1);
            try {
                if (byFrequency) changed.SetSampleFreq(22050.0);
                if (!byFrequency) changed.SetShelves(Shelf(4.0, 300.0), Shelf(4.0, 3000.0));
                failed = false;
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(changed.Process(1000.0), OutputStage(stage).Process(1000.0)) << failures;
                changed.SetSampleFreq(22050.0);
                EXPECT_EQ(changed.Process(1000.0), nextSample) << "designed at the second try";
            }
        }
        EXPECT_GT(failures, 4);
    }
}

}  // namespace
}  // namespace larynth
