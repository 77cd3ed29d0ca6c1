// SPDX-License-Identifier: MIT
#include <algorithm>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include <larynth/ModuleRuntime.h>

#include "engine/NoiseGenerator.h"

TEST(NoiseState, SeedingOneGivesTheFirstDraws) {
    LarynthSeedNoise(1);
    larynth::NoiseGenerator noise(*LarynthNoiseState());
    for (const int expected : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(noise.Draw(), expected);
}

TEST(NoiseState, IsKnownToBeSharedByThreadsAsSoonAsThereAreTwo) {
    char inThread = 1;
    std::thread([&] { inThread = *LarynthSingleThreaded(); }).join();
    EXPECT_EQ(inThread, 0);
}

TEST(NoiseState, DrawsOfSeveralThreadsAreNeitherLostNorDoubled) {
    constexpr std::size_t kThreads = 4;
    constexpr std::size_t kDraws = 5000;
    LarynthSeedNoise(1);
    std::vector<std::uint32_t> before(kThreads * kDraws);
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&before, thread] {
            larynth::NoiseGenerator noise(*LarynthNoiseState());
            for (std::size_t i = 0; i < kDraws; ++i) before[thread * kDraws + i] = noise.Claim(1);
        });
    }
    for (std::thread& thread : threads) thread.join();

    std::ranges::sort(before);
    EXPECT_EQ(std::ranges::adjacent_find(before), before.end());  // the states of 2^32 draws are distinct
    EXPECT_EQ(*LarynthNoiseState(), 2544102817U);
}
