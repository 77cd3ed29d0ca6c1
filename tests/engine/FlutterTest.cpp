// SPDX-License-Identifier: MIT
#include "engine/Flutter.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

TEST(Flutter, AppliesToVoicedFramesWithDepth) {
    EXPECT_TRUE(Flutter::Applies(100.0, 0.1));
    for (const double off : {0.0, -1.0, kNan}) {
        EXPECT_FALSE(Flutter::Applies(off, 0.1)) << off;
        EXPECT_FALSE(Flutter::Applies(100.0, off)) << off;
    }
}

TEST(Flutter, StepAdvancesTheTimeAndMovesF0) {
    Flutter flutter;
    ExpectNear(Feed([&](double F0) { return flutter.Step(F0, 0.3, 900.0); }, {100.0, 100.0, 100.0}),
               {113.11462453215862, 122.17287159063359, 124.83578012135843}, 1e-12);
    EXPECT_NEAR(flutter.Time(), 0.027, 1e-16);
}

TEST(Flutter, StandsAtF0WithoutATimeStepAndStaysWithinItsDepth) {
    Flutter flutter;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(flutter.Step(100.0, 0.3, 0.0), 100.0);
    for (int i = 0; i < 20000; ++i) {
        const double F0 = flutter.Step(100.0, 0.3, 9.070294784580499);
        ASSERT_GE(F0, 70.0);
        ASSERT_LE(F0, 130.0);
    }
    EXPECT_NEAR(flutter.Time(), 20000.0 / 11025.0, 1e-9);
}

TEST(Flutter, ManyStepsAtOnceReachTheTimesOfSingleSteps) {
    constexpr double kUnit = 0x1p-39 * 1e5;  // steps FLT·10⁻⁵ of a last place of times from 2^13 on
    for (const double start :
         {0.0, 0.2, 1.0 - 1e-4, 8191.999, 8192.0, 9999.1, 12345.6, 15001.2, 16383.9999}) {
        for (const double FLT : {0.0, -9.0, 9.07, 800.0, 1e12, 0.5 * kUnit, 1.5 * kUnit, 2.5 * kUnit,
                                 0.4 * kUnit, 2.6 * kUnit, 3.0 * kUnit}) {
            Flutter single, together;
            single.Step(100.0, 0.1, start * 1e5);
            together.Step(100.0, 0.1, start * 1e5);
            for (const std::size_t count : {110U, 0U, 1U, 2U, 250U}) {
                std::vector<double> times(count);
                together.Advance(FLT, times);
                for (std::size_t i = 0; i < count; ++i) {
                    single.Step(100.0, 0.1, FLT);
                    ASSERT_EQ(times[i], single.Time()) << start << " + " << i + 1 << " steps of " << FLT;
                }
                ASSERT_EQ(together.Time(), single.Time());
            }
        }
    }
}

}  // namespace
}  // namespace larynth
