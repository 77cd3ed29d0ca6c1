// SPDX-License-Identifier: MIT
#include "engine/CascadeFilterTract.h"
#include "engine/CascadeTract.h"
#include "engine/ParallelTractCore.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

TEST(CascadeTract, PassesItsInputUntilSectionsAreSet) {
    CascadeTract tract;
    EXPECT_EQ(tract.Resonators().size(), 6U);
    EXPECT_EQ(tract.AntiResonators().size(), 1U);
    EXPECT_EQ(Feed(tract, {1.0, -0.3, 1e9}), (Samples{1.0, -0.3, 1e9}));
}

TEST(CascadeTract, SectionsStandInTheOrderZeroThenPoles) {
    // In any other order an intermediate product leaves the range of a double.
    CascadeTract tract;
    tract.AntiResonators()[0].SetABC(0x1p-1000, 0.0, 0.0);
    tract.Resonators()[0].SetABC(0x1p1000, 0.0, 0.0);
    tract.Resonators()[5].SetABC(0x1p-1000, 0.0, 0.0);
    EXPECT_EQ(tract.Process(0x1p900), 0x1p-100);
}

TEST(CascadeFilterTract, IsSilentUntilWrittenAndThenFilters) {
    CascadeFilterTract tract;
    EXPECT_EQ(Feed(tract, {1.0, 0.0, 0.0}), Samples(3));
    ASSERT_EQ(tract.Filter().Feedback().size(), 12U);
    ASSERT_EQ(tract.Filter().FeedForward().size(), 3U);
    tract.Filter().FeedForward()[2] = 2.0;
    tract.Filter().Feedback()[11] = 0.5;
    EXPECT_EQ(Feed(tract, {1.0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}),
              (Samples{0, 0, 2.0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1.0}));
}

TEST(ParallelTractCore, AddsTheBypassAndEveryResonator) {
    struct Row {
        const char* name;
        double resonatorA, lastA, bypass, input, expected;
    };
    const Row rows[] = {
        {"bypass alone", 0.0, 0.0, -0.7, 2.0, -1.4},
        {"one resonator", 0.0, 1.0, 0.0, 0.3, 0.3},
        {"bypass first", 1.0, -1e16, 1e16, 1.0, 0.0},
    };
    EXPECT_EQ(ParallelTractCore().Process(3.0), 24.0);
    for (const Row& row : rows) {
        ParallelTractCore tract;
        for (Resonator& section : tract.Resonators()) section.SetABC(row.resonatorA, 0.0, 0.0);
        tract.Resonators()[6].SetABC(row.lastA, 0.0, 0.0);
        tract.Bypass().SetGain(row.bypass);
        EXPECT_EQ(tract.Process(row.input), row.expected) << row.name;
    }
}

}  // namespace
}  // namespace larynth
