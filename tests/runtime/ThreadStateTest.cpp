// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <latch>
#include <set>
#include <thread>
#include <vector>

#include <larynth/ModuleRuntime.h>

#include "com/UseCount.h"

namespace {

/// Computed by the processor, in the mode of the moment.
double Product(double x, double y) {
    volatile double atRunTime = x;
    return atRunTime * y;
}

void ExpectFlushing(bool flushing) {
    EXPECT_EQ(Product(0x1p-1022, 0.5), flushing ? 0.0 : 0x1p-1023) << "a denormal result";
    EXPECT_EQ(Product(0x1p-1074, 0x1p100), flushing ? 0.0 : 0x1p-974) << "a denormal operand";
}

}  // namespace

TEST(ArithmeticMode, TakesDenormalsForZeroUntilTheOutermostModeIsBack) {
#if !defined(__x86_64__) && !defined(__aarch64__)
    GTEST_SKIP() << "no such mode on this processor";
#endif
    ExpectFlushing(false);
    const unsigned before = LarynthFlushDenormals();
    ExpectFlushing(true);
    const unsigned within = LarynthFlushDenormals();
    LarynthSetArithmeticMode(within);
    ExpectFlushing(true);
    LarynthSetArithmeticMode(before);
    ExpectFlushing(false);
}

TEST(UseCount, LosesNoUseOfMoreThreadsThanThereAreNumbers) {
    constexpr unsigned kThreads = kLarynthThreadNumbers + 16, kUses = 20'000;
    larynth::UseCount count;
    std::vector<unsigned> numbers(kThreads);
    std::vector<std::thread> threads;
    std::latch start(kThreads), end(kThreads);
    for (unsigned& number : numbers) {
        threads.emplace_back([&] {
            number = LarynthThreadNumber();
            EXPECT_LT(number, kLarynthThreadNumbers);
            start.arrive_and_wait();
            for (unsigned i = 0; i < kUses; ++i) {
                count.Begin();
                if (i % 2 == 0) count.End();
            }
            EXPECT_EQ(LarynthThreadNumber(), number);
            end.arrive_and_wait();
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(count.Ended(), kThreads * kUses / 2);
    EXPECT_EQ(count.Begun(), kThreads * kUses);
    std::multiset<unsigned> taken(numbers.begin(), numbers.end());
    EXPECT_EQ(taken.size() - taken.count(0), kLarynthThreadNumbers - 2) << "all but this thread's";
    taken.erase(0);
    EXPECT_EQ(std::set<unsigned>(taken.begin(), taken.end()).size(), taken.size()) << "each once";
    EXPECT_FALSE(taken.contains(LarynthThreadNumber()));
    std::thread([] { EXPECT_NE(LarynthThreadNumber(), 0U) << "numbers come back"; }).join();
}
