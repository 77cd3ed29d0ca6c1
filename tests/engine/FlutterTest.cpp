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

}  // namespace
}  // namespace larynth
