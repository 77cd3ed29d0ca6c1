// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "engine/NoiseSource.h"
#include "engine/block/Kernels.h"
#include "synth/OutputStage.h"

namespace larynth::block {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Kernels, NoiseIsTheGeneratorsSequenceInTurns) {
    for (const Kernels* const kernels : AvailableKernels()) {
        for (std::size_t count = 1; count <= 21; ++count) {
            std::uint32_t word = 4711;
            NoiseSource first(3.0, NoiseGenerator(word)), second(0.25, NoiseGenerator(word));
            std::vector<double> a(count + kRoom), b(count + kRoom), c(count + kRoom);
            kernels->noise(4711, {3.0, 0.25, 0.7, a.data(), b.data(), c.data()}, count);
            for (std::size_t i = 0; i < count; ++i) {
                ASSERT_EQ(a[i], first.Evaluate(true)) << kernels->name << " sample " << i << " of " << count;
                ASSERT_EQ(b[i], second.Evaluate(true)) << kernels->name << " sample " << i << " of " << count;
                ASSERT_EQ(c[i], 0.7 * b[i]) << kernels->name << " sample " << i << " of " << count;
            }
        }
    }
}

/// Sums of which one in ten is a value that a conversion could stumble over.
std::vector<double> StrangeSums(std::size_t count, std::mt19937& random) {
    std::uniform_real_distribution<double> usual(-70000.0, 70000.0);
    const double strange[] = {2147483647.9, 2147483648.0, -2147483648.0, 9e18, -1e300, kInfinity, kNan};
    std::vector<double> sums(count);
    for (double& each : sums) {
        const std::size_t choice = random() % 70;
        each = choice < std::size(strange) ? strange[choice] : usual(random);
    }
    return sums;
}

TEST(Kernels, FinishCutsAsASingleSampleIsCut) {
    std::mt19937 random(3);
    for (const Kernels* const kernels : AvailableKernels()) {
        for (std::size_t count = 1; count <= 60; ++count) {
            const std::vector<double> sums = StrangeSums(count, random);
            for (const auto [gain, coefficient, volume] : {Finish{0.7, 0.9, 1.3}, Finish{1.0, 0.0, 1.0}}) {
                std::vector<std::int16_t> samples(count);
                kernels->finish({gain, coefficient, volume}, 11.0, sums.data(), samples.data(), count);
                double before = 11.0;
                for (std::size_t i = 0; i < count; ++i) {
                    const double y = sums[i] * gain;
                    ASSERT_EQ(samples[i], ToSample(volume * (y - coefficient * before)))
                        << kernels->name << " sample " << i << " of " << count << ": " << sums[i];
                    before = y;
                }
            }
        }
    }
}

}  // namespace
}  // namespace larynth::block
