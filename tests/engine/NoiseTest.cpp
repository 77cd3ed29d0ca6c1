// SPDX-License-Identifier: MIT
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "engine/NoiseGenerator.h"
#include "engine/NoiseSource.h"

namespace larynth {
namespace {

NoiseLease& LeaseOfThread() noexcept {
    static constinit thread_local NoiseLease lease;
    return lease;
}

constexpr char kAlone = 1, kNotAlone = 0;

std::vector<int> Draws(NoiseGenerator& generator, std::size_t count) {
    std::vector<int> values;
    for (std::size_t i = 0; i < count; ++i) values.push_back(generator.Draw());
    return values;
}

TEST(NoiseGenerator, GivesTheSequenceOfItsSeed) {
    NoiseGenerator generator;
    EXPECT_EQ(Draws(generator, 5), (std::vector{41, 18467, 6334, 26500, 19169}));
    generator.Seed(12345);
    EXPECT_EQ(Draws(generator, 3), (std::vector{7584, 19164, 25795}));
}

TEST(NoiseGenerator, JumpEqualsThatManyDraws) {
    using Row = std::pair<std::uint64_t, std::uint32_t>;
    constexpr std::uint64_t kPeriod = std::uint64_t{1} << 32;
    for (const auto& [count, state] : {Row(0, 1), Row(1, 2745024), Row(5, 3403800452), Row(8000, 3989201473),
                                       Row(kPeriod - 1, 1529096086), Row(kPeriod, 1)}) {
        EXPECT_EQ(JumpNoiseState(1, count), state) << count;
    }
}

/// One thread gets the sequence whatever is leased, claimed and given back in between.
TEST(NoiseGenerator, OneThreadDrawsInOrderWithAndWithoutALease) {
    for (const char* const alone : {&kAlone, &kNotAlone}) {
        NoiseGenerator generator(*alone, LeaseOfThread), plain;
        for (int frame = 0; frame < 40; ++frame) {
            std::optional<LeasedDraws> outer, inner;
            if (frame % 3 != 0) outer.emplace(generator);
            EXPECT_EQ(Draws(generator, 7), Draws(plain, 7));
            if (frame % 5 == 1) inner.emplace(generator);
            EXPECT_EQ(Draws(generator, 61), Draws(plain, 61));
            EXPECT_EQ(generator.Claim(3), plain.Claim(3)) << "a block in the midst of a frame";
            inner.reset();
            EXPECT_EQ(Draws(generator, 130), Draws(plain, 130));
            outer.reset();
            ASSERT_EQ(generator.State(), plain.State()) << "the rest is given back";
        }
    }
}

TEST(NoiseGenerator, WhatCannotBeGivenBackIsDrawnLater) {
    NoiseGenerator generator(kNotAlone, LeaseOfThread), plain;
    const std::vector<int> sequence = Draws(plain, NoiseLease::kDraws + 2);
    {
        const LeasedDraws leased(generator);
        Draws(generator, NoiseLease::kDraws - 1);
        std::thread([&] { EXPECT_EQ(generator.Draw(), sequence[NoiseLease::kDraws]); }).join();
    }
    const LeasedDraws leased(generator);
    EXPECT_EQ(generator.Draw(), sequence[NoiseLease::kDraws - 1]);
    EXPECT_EQ(generator.Draw(), sequence[NoiseLease::kDraws + 1]);
}

/// A state tells a draw: the states of 2^32 draws are distinct.
TEST(NoiseGenerator, ThreadsShareTheSequenceWithoutLossOrRepetition) {
    NoiseGenerator generator(kNotAlone, LeaseOfThread);
    std::vector<std::uint32_t> taken[4];
    std::atomic<std::uint32_t> left = 0;
    std::vector<std::thread> threads;
    for (unsigned k = 0; k < 4; ++k) {
        threads.emplace_back([&, k] {
            for (unsigned frame = 0; frame < 200; ++frame) {
                std::optional<LeasedDraws> leased;
                if (k != 0) leased.emplace(generator);
                for (unsigned i = 0; i < 1 + frame * (k + 5) % 150; ++i) {
                    if (k != 0) generator.Draw();
                    taken[k].push_back(k != 0 ? static_cast<std::uint32_t>(LeaseOfThread().word)
                                              : NextNoiseState(generator.Claim(1)));
                }
            }
            left += LeaseOfThread().left;
        });
    }
    for (std::thread& thread : threads) thread.join();
    std::vector<std::uint32_t> all;
    for (const auto& states : taken) all.insert(all.end(), states.begin(), states.end());
    std::ranges::sort(all);
    EXPECT_EQ(std::ranges::adjacent_find(all), all.end()) << "given twice";
    EXPECT_EQ(JumpNoiseState(kInitialNoiseState, all.size() + left), generator.State()) << "lost";
}

TEST(NoiseGenerator, ASeedTakesEffectForTheNextDrawOfEveryThread) {
    for (const char* const alone : {&kAlone, &kNotAlone}) {
        NoiseGenerator generator(*alone, LeaseOfThread);
        const LeasedDraws leased(generator);
        Draws(generator, 10);
        if (*alone != 0) {
            generator.Seed(12345);
        } else {
            std::thread([&] { generator.Seed(12345); }).join();
        }
        EXPECT_EQ(Draws(generator, 3), (std::vector{7584, 19164, 25795}));
        generator.Seed(1);
        EXPECT_EQ(Draws(generator, 2), (std::vector{41, 18467})) << "amid a frame, by the thread itself";
    }
}

TEST(NoiseSource, SampleIsUniformOverTheScaledRange) {
    EXPECT_EQ(NoiseSample<double>(0, 2.0), -1.732050808);
    EXPECT_EQ(NoiseSample<double>(16384, 2.0), 5.285960899685509e-05);
    EXPECT_EQ(NoiseSample<double>(kMaxNoiseValue, 2.0), 1.732050808);
}

TEST(NoiseSource, OnlyAComputedSampleCostsADraw) {
    NoiseGenerator generator;
    NoiseSource source(2.0, generator);
    EXPECT_EQ(source.Evaluate(false), -1.7277163200622578);
    source.SetAmplitude(0.0);
    EXPECT_EQ(source.Evaluate(false), -1.7277163200622578);
    EXPECT_EQ(generator.State(), 2745024U);
    EXPECT_EQ(source.Evaluate(true), 0.0);
    EXPECT_EQ(generator.State(), 3357800067U);
}

}  // namespace
}  // namespace larynth
