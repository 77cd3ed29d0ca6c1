// SPDX-License-Identifier: MIT
#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "engine/NoiseSource.h"
#include "engine/vector/Kernels.h"
#include "engine/vector/PhaseTable.h"
#include "synth/OutputStage.h"

namespace larynth::vector {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Kernels, EverySetOfTheProcessorIsThere) {
    std::vector<std::string> names;
    for (const Kernels* const kernels : AvailableKernels()) names.push_back(kernels->name);
#ifdef __x86_64__
    std::vector<std::string> expected = {"baseline"};
    if (__builtin_cpu_supports("avx2")) expected.push_back("AVX2");
    if (__builtin_cpu_supports("avx512vl")) expected.push_back("AVX-512VL");
    EXPECT_EQ(names, expected);
    if (names.size() < 3)
        GTEST_SKIP() << "no loops beyond " << names.back() << " run on this processor: untested";
#else
    EXPECT_EQ(names, std::vector<std::string>{"baseline"});
#endif
}

TEST(Kernels, NoiseIsTheGeneratorsSequenceInTurns) {
    for (const Kernels* const kernels : AvailableKernels()) {
        for (std::size_t count = 1; count <= 21; ++count) {
            NoiseGenerator generator;
            generator.Seed(4711);
            NoiseSource first(3.0, generator), second(0.25, generator);
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

/// Some lengths are sums of the sample time to the last bit: such a period ends one sample later.
TEST(PhaseTable, HoldsThePhasesOfSingleSteps) {
    std::mt19937 random(9);
    const double T = 0x1p-13,
                 lengths[] = {64 * T, 64.5 * T, 63 * T, 300 * T, 2 * T, T, 0.3 * T, 0.0, kInfinity, kNan};
    for (const double T0 : lengths) {
        PhaseTable table;
        double phase = 0.0, expected = 0.0;
        for (int stretch = 0; stretch < 60; ++stretch) {
            std::vector<double> phases(random() % kStretch + 1), each(phases.size(), T0);
            const bool moving = stretch % 3 == 0;
            if (moving) std::ranges::generate(each, [&] { return random() % 50 == 0 ? 60 * T : T0; });
            if (moving) table.Write(T, phase, each.data(), phases);
            if (!moving) table.Write(T, phase, T0, phases);
            for (std::size_t i = 0; i < phases.size(); ++i) {
                expected = NextPhase(expected, T, each[i]);
                ASSERT_EQ(phases[i], expected)
                    << "period " << T0 << ", stretch " << stretch << ", sample " << i;
            }
            ASSERT_EQ(phase, expected);
        }
    }
}

}  // namespace
}  // namespace larynth::vector
