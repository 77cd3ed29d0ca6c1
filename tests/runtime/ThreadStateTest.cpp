// SPDX-License-Identifier: MIT
// What the process and its threads share: the arithmetic mode, counts of uses.
#include <algorithm>
#include <gtest/gtest.h>
#include <latch>
#include <set>
#include <vector>

#include <larynth/ModuleRuntime.h>

#include "com/UseCount.h"
#include "tests/support/InThreads.h"

namespace {

/// Computed by the processor, in the mode of the moment.
double Product(double x, double y) {
    volatile double atRunTime = x;
    return atRunTime * y;
}

}  // namespace

TEST(ArithmeticMode, TakesDenormalResultsAndOperandsForZeroAndGoesBack) {
#if !defined(__x86_64__) && !defined(__aarch64__)
    GTEST_SKIP() << "no such mode on this processor";
#endif
    const unsigned before = LarynthFlushDenormals();
    const double result = Product(0x1p-1022, 0.5), ofOperand = Product(0x1p-1074, 0x1p100);
    LarynthSetArithmeticMode(before);
    EXPECT_EQ(result, 0.0);
    EXPECT_EQ(ofOperand, 0.0);
    EXPECT_EQ(Product(0x1p-1022, 0.5), 0x1p-1023);
}

TEST(UseCount, LosesNoUseOfMoreThreadsThanThereAreNumbers) {
    constexpr unsigned kThreads = kLarynthThreadNumbers + 4, kUses = 100'000;
    const volatile unsigned mine = LarynthThreadNumber();  // asked here, not where it is used
    larynth::UseCount count;
    std::vector<unsigned> numbers(kThreads);
    std::latch numbered(kThreads);
    InThreads(kThreads, [&](int thread) {
        const unsigned number = LarynthThreadNumber();
        EXPECT_LT(number, kLarynthThreadNumbers);
        numbers[static_cast<unsigned>(thread)] = number;
        numbered.arrive_and_wait();
        for (unsigned i = 0; i < kUses; ++i) {
            count.Begin();
            count.End();
        }
    });
    EXPECT_EQ(count.Ended(), kThreads * kUses) << "those without a number share a line";
    EXPECT_EQ(count.Begun(), kThreads * kUses);
    const std::set<unsigned> taken(numbers.begin(), numbers.end());
    EXPECT_EQ(taken.size(), kLarynthThreadNumbers - 1) << "all but this thread's, and none but 0 twice";
    EXPECT_EQ(std::ranges::count(numbers, 0U), kThreads - (kLarynthThreadNumbers - 2));
    EXPECT_FALSE(taken.contains(unsigned{mine}));
    InThreads(1, [](int) { EXPECT_NE(LarynthThreadNumber(), 0U) << "numbers come back"; });
}
