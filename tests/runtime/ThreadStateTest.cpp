// SPDX-License-Identifier: MIT
// What the process and its threads share: the arithmetic mode, counts of uses.
#include <atomic>
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
    constexpr unsigned kThreads = kLarynthThreadNumbers + 4;
    const unsigned mine = LarynthThreadNumber();
    larynth::UseCount count;
    std::vector<unsigned> numbers(kThreads);
    std::atomic<std::uint64_t> uses = 0;
    std::latch numbered(kThreads);
    InThreads(kThreads, [&](int thread) {
        const unsigned number = LarynthThreadNumber();
        EXPECT_LT(number, kLarynthThreadNumbers);
        numbers[static_cast<unsigned>(thread)] = number;
        numbered.arrive_and_wait();
        const unsigned own = number != 0 ? 1'000 : 1'000'000;  // those without a number share a line
        for (unsigned i = 0; i < own; ++i) {
            count.Begin();
            count.End();
        }
        uses += own;
    });
    EXPECT_EQ(count.Ended(), uses);
    EXPECT_EQ(count.Begun(), uses);
    std::multiset<unsigned> taken(numbers.begin(), numbers.end());
    EXPECT_EQ(taken.count(0), kThreads - (kLarynthThreadNumbers - 2)) << "all but 0 and this thread's";
    taken.erase(0);
    EXPECT_EQ(std::set<unsigned>(taken.begin(), taken.end()).size(), taken.size()) << "each once";
    EXPECT_FALSE(taken.contains(mine));
    InThreads(1, [](int) { EXPECT_NE(LarynthThreadNumber(), 0U) << "numbers come back"; });
}
