// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>
#include <random>

#include "engine/Trigonometry.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

/// The error in units in the last place of the true value, which the wider type gives.
double ErrorInUlp(double x) {
    const long double truth = std::sin(static_cast<long double>(x));
    const double rounded = std::fabs(static_cast<double>(truth));
    const double ulp = std::nextafter(rounded, 2.0) - rounded;
    return static_cast<double>(std::fabs(static_cast<long double>(Sine(x)) - truth) / ulp);
}

TEST(Sine, IsWithinOneUnitInTheLastPlace) {
    if constexpr (std::numeric_limits<long double>::digits == std::numeric_limits<double>::digits) {
        GTEST_SKIP() << "no wider type to compare with";
    }
    std::mt19937_64 random(1);
    for (const double limit : {1e-8, 1.0, 100.0, 1e4, kSineReductionLimit, 1e12}) {
        std::uniform_real_distribution<double> argument(-limit, limit);
        for (int i = 0; i < 100000; ++i) {
            const double x = argument(random);
            ASSERT_LT(ErrorInUlp(x), 1.0) << x;
            if (limit <= kSineReductionLimit) {
                ASSERT_EQ(ReducedSine(ReduceToQuadrant(x)), Sine(x)) << x;
            }
        }
    }
}

TEST(Sine, IsAccurateNextToMultiplesOfPi) {
    if constexpr (std::numeric_limits<long double>::digits == std::numeric_limits<double>::digits) {
        GTEST_SKIP() << "no wider type to compare with";
    }
    for (int quadrant = 1; quadrant < 318000; quadrant += 7) {
        const double x = static_cast<double>(quadrant * 1.57079632679489661923132169163975144L);
        ASSERT_LT(ErrorInUlp(x), 1.0) << quadrant;
        ASSERT_LT(ErrorInUlp(std::nextafter(x, 0.0)), 1.0) << quadrant;
    }
}

TEST(Sine, KeepsZeroSignsAndWhatIsNoNumber) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Sine(0.0), 0.0);
    EXPECT_EQ(Sine(-1.0), -Sine(1.0));
    for (const double x : {kNan, kInfinity, -kInfinity}) EXPECT_TRUE(std::isnan(Sine(x))) << x;
}

}  // namespace
}  // namespace larynth
