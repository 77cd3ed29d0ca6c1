// SPDX-License-Identifier: MIT
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string_view>
#include <vector>

#include "engine/Exponential.h"
#include "engine/SectionValues.h"
#include "engine/Trigonometry.h"
#include "engine/vector/Kernels.h"
#include "engine/vector/PhaseTable.h"
#include "synth/OutputStage.h"
#include "tests/support/Numbers.h"

namespace larynth::vector {
namespace {

TEST(Kernels, EverySetOfTheProcessorIsThere) {
    std::vector<std::string_view> names;
    for (const Kernels* const kernels : AvailableKernels()) names.emplace_back(kernels->name);
    std::vector<std::string_view> expected = {"baseline"};
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx2")) expected.emplace_back("AVX2");
    if (__builtin_cpu_supports("avx512vl")) expected.emplace_back("AVX-512VL");
#endif
    EXPECT_EQ(names, expected);
#ifdef __x86_64__
    if (names.size() < 3) GTEST_SKIP() << "nothing beyond " << names.back() << " runs here: untested";
#endif
}

TEST(Kernels, FinishCutsAsASingleSampleIsCut) {
    const double strange[] = {2147483647.9, 2147483648.0, -2147483648.0, 9e18, -1e300, kInfinity, kNan};
    std::mt19937 random(3);
    std::uniform_real_distribution<double> usual(-70000.0, 70000.0);
    for (const Kernels* const kernels : AvailableKernels()) {
        for (std::size_t count = 1; count <= 60; ++count) {
            std::vector<double> sums(count);
            for (double& sum : sums) sum = random() % 10 == 0 ? strange[random() % 7] : usual(random);
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

/// The coefficients of one section, in the order of operations that decides their bits.
SectionValues Designed(double F, double BW, double G, bool anti, double T) {
    if (anti ? F == 0.0 : F <= 0.0 || BW <= 0.0) return {anti ? 1.0 : G, 0.0, 0.0};
    const double r = Exponential(-3.141592654 * BW * T);
    const double C = -(r * r);
    const double B = 2.0 * r * Cosine(6.283185308 * F * T);
    const double A = anti ? G / (1.0 - B - C) : G * (1.0 - B - C);
    return anti ? SectionValues{A, -B * A, -C * A} : SectionValues{A, B, C};
}

bool Same(double a, double b) { return a == b || (a != a && b != b); }

TEST(Kernels, EveryWantedSectionIsDesignedAsASingleOneIs) {
    const double odd[] = {0.0, -0.0, -300.0, 5e-324, 1e7, 1e12, 1e300, kInfinity, -kInfinity, kNan};
    std::mt19937 random(5);
    std::uniform_real_distribution<double> frequency(0.0, 12000.0), gain(-2.0, 2.0);
    const auto value = [&] { return random() % 8 == 0 ? odd[random() % 10] : frequency(random); };
    for (const Kernels* const kernels : AvailableKernels()) {
        for (int round = 0; round < 4000; ++round) {
            const double T = round % 3 == 0 ? 1.0 / 11025.0 : round % 3 == 1 ? 1.0 / 44100.0 : 1.0;
            FrequencyRows given;
            std::ranges::generate(given.F, value);
            std::ranges::generate(given.BW, value);
            std::ranges::generate(given.G, [&] { return gain(random); });
            const unsigned wanted = round % 2 == 0 ? Frame::kAllSections : random() & Frame::kAllSections;
            CoefficientRows designed;
            for (SectionRow* row : {&designed.A, &designed.B, &designed.C}) row->fill(7.0);
            kernels->sections({given, T, wanted, designed});
            for (std::size_t k = 0; k < Frame::kSectionCount; ++k) {
                const bool anti = k == Frame::kFirstCascadeZero;
                const SectionValues expected = (wanted >> k & 1U) != 0
                                                   ? Designed(given.F[k], given.BW[k], given.G[k], anti, T)
                                                   : SectionValues{7.0, 7.0, 7.0};
                const auto [A, B, C] = designed.At(k);
                ASSERT_TRUE(Same(A, expected.A) && Same(B, expected.B) && Same(C, expected.C))
                    << kernels->name << ": " << given.F[k] << ' ' << given.BW[k] << ' ' << given.G[k] << anti;
            }
        }
    }
}

}  // namespace
}  // namespace larynth::vector
