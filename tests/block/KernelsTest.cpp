// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "engine/block/Kernels.h"
#include "engine/NoiseSource.h"
#include "synth/OutputStage.h"

namespace larynth::block {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(Kernels, NoiseIsTheGeneratorsSequenceInTurns) {
    for (const Kernels* const kernels : AvailableKernels()) {
        for (std::size_t count = 1; count <= 21; ++count) {
            std::uint32_t word = 4711;
            NoiseSource first(3.0, NoiseGenerator(word)), second(0.25, NoiseGenerator(word));
            std::vector<double> a(count + 3), b(count + 3);
            kernels->noise(4711, {3.0, 0.25, a.data(), b.data()}, count);
            for (std::size_t i = 0; i < count; ++i) {
                ASSERT_EQ(a[i], first.Evaluate(true)) << kernels->name << " sample " << i << " of " << count;
                ASSERT_EQ(b[i], second.Evaluate(true)) << kernels->name << " sample " << i << " of " << count;
            }
        }
    }
}

TEST(Kernels, FinishCutsAsASingleSampleIsCut) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> sum(-70000.0, 70000.0);
    for (const Kernels* const kernels : AvailableKernels()) {
        for (std::size_t count = 1; count <= 40; ++count) {
            std::vector<double> sums(count);
            for (double& each : sums) each = sum(random);
            std::vector<std::int16_t> samples(count);
            ASSERT_TRUE(kernels->finish({0.7, 0.9, 1.3}, 11.0, sums.data(), samples.data(), count));
            double before = 11.0;
            for (std::size_t i = 0; i < count; ++i) {
                const double y = sums[i] * 0.7;
                ASSERT_EQ(samples[i], ToSample(1.3 * (y - 0.9 * before))) << kernels->name << " " << i;
                before = y;
            }
        }
    }
}

TEST(Kernels, FinishReportsWhatIsTooLargeForIt) {
    for (const Kernels* const kernels : AvailableKernels()) {
        for (const double large : {2147483648.0, -2147483648.0, 1e300, kNan}) {
            for (std::size_t place = 0; place < 9; ++place) {
                std::vector<double> sums(9, 1.0);
                sums[place] = large;
                std::int16_t samples[9];
                EXPECT_FALSE(kernels->finish({1.0, 0.0, 1.0}, 0.0, sums.data(), samples, 9))
                    << kernels->name << " " << large << " at " << place;
            }
        }
    }
}

}  // namespace
}  // namespace larynth::block
