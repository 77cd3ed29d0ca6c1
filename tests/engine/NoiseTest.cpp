// SPDX-License-Identifier: MIT
#include <atomic>
#include <cstdint>
#include <gtest/gtest.h>
#include <thread>
#include <utility>
#include <vector>

#include "engine/NoiseGenerator.h"
#include "engine/NoiseSource.h"

namespace larynth {
namespace {

TEST(NoiseGenerator, GivesTheSequenceOfItsSeed) {
    std::uint32_t word = kInitialNoiseState;
    NoiseGenerator generator(word);
    for (const int expected : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(generator.Draw(), expected);
    generator.Seed(12345);
    for (const int expected : {7584, 19164, 25795}) EXPECT_EQ(generator.Draw(), expected);
}

TEST(NoiseGenerator, JumpEqualsThatManyDraws) {
    using Row = std::pair<std::uint64_t, std::uint32_t>;
    constexpr std::uint64_t kPeriod = std::uint64_t{1} << 32;
    for (const auto& [count, state] : {Row(0, 1), Row(1, 2745024), Row(5, 3403800452), Row(8000, 3989201473),
                                       Row(kPeriod - 1, 1529096086), Row(kPeriod, 1)}) {
        EXPECT_EQ(JumpNoiseState(1, count), state) << count;
    }
}

TEST(NoiseGenerator, AClaimTakesItsDrawsFromEveryViewOfTheWord) {
    std::uint32_t word = kInitialNoiseState;
    NoiseGenerator one(word);
    NoiseGenerator other(word);
    EXPECT_EQ(one.Draw(), 41);
    EXPECT_EQ(other.Claim(2), 2745024U);
    EXPECT_EQ(one.Draw(), 26500);
}

TEST(NoiseGenerator, ThreadsShareTheSequenceWithoutLossOrRepetition) {
    std::uint32_t word = kInitialNoiseState;
    std::atomic<int> sum = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&word, &sum] {
            for (int k = 0; k < 2000; ++k) sum += NoiseGenerator(word).Draw();
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(word, 3989201473U);
    EXPECT_EQ(sum, 132347344);
}

TEST(NoiseSource, SampleIsUniformOverTheScaledRange) {
    EXPECT_EQ(NoiseSample<double>(0, 2.0), -1.732050808);
    EXPECT_EQ(NoiseSample<double>(16384, 2.0), 5.285960899685509e-05);
    EXPECT_EQ(NoiseSample<double>(kMaxNoiseValue, 2.0), 1.732050808);
}

TEST(NoiseSource, OnlyAComputedSampleCostsADraw) {
    std::uint32_t word = kInitialNoiseState;
    NoiseSource source(2.0, NoiseGenerator(word));
    EXPECT_EQ(source.Evaluate(false), -1.7277163200622578);
    source.SetAmplitude(0.0);
    EXPECT_EQ(source.Evaluate(false), -1.7277163200622578);
    EXPECT_EQ(word, 2745024U);
    EXPECT_EQ(source.Evaluate(true), 0.0);
    EXPECT_EQ(word, 3357800067U);
}

}  // namespace
}  // namespace larynth
