// SPDX-License-Identifier: MIT
#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <optional>
#include <thread>
#include <vector>

#include "engine/NoiseGenerator.h"
#include "tests/support/InThreads.h"

namespace larynth {
namespace {

NoiseLease& LeaseOfThread() noexcept {
    static constinit thread_local NoiseLease lease;
    return lease;
}

constexpr char kAlone = 1, kNotAlone = 0;

std::vector<int> Draws(NoiseGenerator& generator, std::size_t count) {
    std::vector<int> values(count);
    std::ranges::generate(values, [&] { return generator.Draw(); });
    return values;
}

TEST(NoiseGenerator, OneThreadDrawsInOrderWithAndWithoutALease) {
    for (const char* const alone : {&kAlone, &kNotAlone}) {
        NoiseGenerator generator(*alone, LeaseOfThread), plain;
        for (int frame = 0; frame < 40; ++frame) {
            std::optional<LeasedDraws> leased;
            if (frame % 3 != 0) leased.emplace(generator);
            EXPECT_EQ(Draws(generator, 61), Draws(plain, 61));
            EXPECT_EQ(generator.Claim(3), plain.Claim(3)) << "a block in the midst of a frame";
            EXPECT_EQ(Draws(generator, 130), Draws(plain, 130));
            leased.reset();
            ASSERT_EQ(generator.State(), plain.State()) << "the rest is given back";
        }
    }
}

/// A state tells a draw: the states of 2^32 draws are distinct.
TEST(NoiseGenerator, ThreadsShareTheSequenceWithoutLossOrRepetition) {
    NoiseGenerator generator(kNotAlone, LeaseOfThread);
    std::vector<std::uint32_t> taken[4], all;
    std::atomic<std::uint32_t> left = 0;
    InThreads(4, [&](int thread) {
        const auto k = static_cast<std::size_t>(thread);
        for (std::size_t frame = 0; frame < 200; ++frame) {
            std::optional<LeasedDraws> leased;
            if (k != 0) leased.emplace(generator);
            for (std::size_t i = 0; i < 1 + frame * (k + 5) % 150; ++i) {
                if (k != 0) generator.Draw();
                taken[k].push_back(k != 0 ? static_cast<std::uint32_t>(LeaseOfThread().word)
                                          : NextNoiseState(generator.Claim(1)));
            }
        }
        left += LeaseOfThread().left;
    });
    for (const auto& states : taken) all.insert(all.end(), states.begin(), states.end());
    std::ranges::sort(all);
    EXPECT_EQ(std::ranges::adjacent_find(all), all.end()) << "given twice";
    EXPECT_EQ(JumpNoiseState(kInitialNoiseState, all.size() + left), generator.State()) << "lost";
}

TEST(NoiseGenerator, ASeedTakesEffectForTheNextDrawOfEveryThread) {
    NoiseGenerator generator(kNotAlone, LeaseOfThread);
    EXPECT_EQ(Draws(generator, 5), (std::vector{41, 18467, 6334, 26500, 19169}));
    const LeasedDraws leased(generator);
    Draws(generator, 10);
    std::thread([&] { generator.Seed(12345); }).join();
    EXPECT_EQ(Draws(generator, 3), (std::vector{7584, 19164, 25795}));
    generator.Seed(1);
    Draws(generator, 10);
    generator.Seed(1);
    std::thread([&] { generator.Claim(NoiseLease::kDraws); }).join();
    EXPECT_EQ(static_cast<std::uint32_t>(generator.Draw()),
              NoiseValue(JumpNoiseState(1, NoiseLease::kDraws + 1)))
        << "the old lease ended at the same state, but of another sequence";
}

}  // namespace
}  // namespace larynth
