// SPDX-License-Identifier: MIT
#include <bit>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "engine/CascadeTract.h"
#include "engine/NoiseSource.h"
#include "engine/ParallelTractCore.h"
#include "engine/block/Kernels.h"
#include "synth/OutputStage.h"

namespace larynth::block {
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

/// Both tracts of random sections, and the tilt.
struct Elements {
    CascadeTract cascade;
    ParallelTractCore parallel;
    Resonator tilt;

    explicit Elements(std::mt19937& random) {
        std::uniform_real_distribution<double> F(100.0, 5000.0), BW(20.0, 500.0), gain(-1.0, 1.0);
        for (Resonator& section : cascade.Resonators()) section.SetFB(F(random), BW(random), 1.0, 1e-4);
        for (Resonator& section : parallel.Resonators())
            section.SetFB(F(random), BW(random), gain(random), 1e-4);
        cascade.AntiResonators()[0].SetABC(20.0, -35.0, 16.0);
        tilt.SetFB(4.0, 1500.0, 1.0, 1e-4);
        parallel.Bypass().SetGain(gain(random));
    }
    Tracts Lanes(bool tilting) {
        Tracts tracts;
        tracts.tilt = tilting ? &tilt.Values() : nullptr;
        tracts.antiResonator = &cascade.AntiResonators()[0].Values();
        for (std::size_t i = 0; i < 6; ++i) tracts.cascade[i] = &cascade.Resonators()[i].Values();
        for (std::size_t i = 0; i < 7; ++i) tracts.parallel[i] = &parallel.Resonators()[i].Values();
        return tracts;
    }
};

bool SameBits(double a, double b) {
    return (a != a && b != b) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// One stretch after the other of all lengths, so that a state that is wrong behind one shows in the next.
TEST(Kernels, TractsPutOutWhatTheElementsDo) {
    constexpr std::size_t kRoomy = kStretch + kRoom;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> usual(-100.0, 100.0);
    const auto next = [&](double strange) { return random() % 2000 == 0 ? strange : usual(random); };
    for (const Kernels* const kernels : AvailableKernels()) {
        for (const double strange : {0.0, -0.0, 1e300, kInfinity, kNan}) {
            Elements one(random);
            Elements lanes = one;
            for (std::size_t k = 1; k < 120; ++k) {
                const std::size_t count = k < 60 ? k : k % 2 == 0 ? kStretch : random() % 20 + 1;
                const bool tilting = k % 3 != 0, wholeTract = k % 5 != 0;
                double voicing[kRoomy], aspiration[kRoomy], frication[kRoomy], bypassed[kRoomy], sum[kRoomy];
                for (std::size_t i = 0; i < count; ++i) {
                    voicing[i] = next(strange), aspiration[i] = next(strange), frication[i] = next(strange);
                    bypassed[i] = one.parallel.Bypass().Process(frication[i]);
                    sum[i] = usual(random);
                }
                double expected[kStretch], last = 0.0;
                for (std::size_t i = 0; i < count; ++i) {
                    last = one.parallel.Process(frication[i]);
                    const double voiced = tilting && wholeTract ? one.tilt.Process(voicing[i]) : voicing[i];
                    expected[i] = last + (wholeTract ? one.cascade.Process(voiced + aspiration[i]) : sum[i]);
                }
                const auto run = wholeTract ? kernels->tracts : kernels->parallel;
                const double put =
                    run(lanes.Lanes(tilting), {voicing, aspiration, frication, bypassed, sum}, count);
                ASSERT_TRUE(SameBits(put, last)) << kernels->name << ", " << count;
                for (std::size_t i = 0; i < count; ++i) {
                    ASSERT_TRUE(SameBits(sum[i], expected[i]))
                        << kernels->name << ", sample " << i << " of " << count;
                }
            }
        }
    }
}

}  // namespace
}  // namespace larynth::block
