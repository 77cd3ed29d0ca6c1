// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <thread>

#include <larynth/ModuleRuntime.h>

#include "engine/NoiseGenerator.h"

namespace larynth {
namespace {

TEST(Noise, SeedingOneGivesTheFirstDrawsOfTheOneGenerator) {
    LarynthSeedNoise(1);
    for (const int expected : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(LarynthNoise()->Draw(), expected);
}

/// With a second thread the process is no longer known to have one, and leases begin to count.
TEST(Noise, EachThreadHasALeaseOfItsOwnWhichASeedEnds) {
    LarynthSeedNoise(1);
    int first = 0, beyond = 0, reseeded = 0;
    std::thread([&] {
        const LeasedDraws leased(*LarynthNoise());
        first = LarynthNoise()->Draw();
        std::thread([&] { beyond = LarynthNoise()->Draw(); }).join();
        LarynthSeedNoise(12345);
        reseeded = LarynthNoise()->Draw();
    }).join();
    EXPECT_EQ(first, 41);
    EXPECT_EQ(beyond, NoiseValue(JumpNoiseState(1, NoiseLease::kDraws + 1)));
    EXPECT_EQ(reseeded, 7584);
}

}  // namespace
}  // namespace larynth
