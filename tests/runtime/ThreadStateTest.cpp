// SPDX-License-Identifier: MIT
#include <atomic>
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
    constexpr unsigned kThreads = kLarynthThreadNumbers + 4;
    const unsigned mine = LarynthThreadNumber();
    larynth::UseCount count;
    std::vector<unsigned> numbers(kThreads);
    std::atomic<std::uint64_t> uses = 0;
    std::vector<std::thread> threads;
    std::latch numbered(kThreads);
    for (unsigned& number : numbers) {
        threads.emplace_back([&] {
            number = LarynthThreadNumber();
            EXPECT_LT(number, kLarynthThreadNumbers);
            numbered.arrive_and_wait();
            const unsigned own = number != 0 ? 1'000 : 1'000'000;  // those without a number share a line
            for (unsigned i = 0; i < own; ++i) {
                count.Begin();
                count.End();
            }
            uses += own;
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(count.Ended(), uses);
    EXPECT_EQ(count.Begun(), uses);
    std::multiset<unsigned> taken(numbers.begin(), numbers.end());
    EXPECT_EQ(taken.count(0), kThreads - (kLarynthThreadNumbers - 2)) << "all but 0 and this thread's";
    taken.erase(0);
    EXPECT_EQ(std::set<unsigned>(taken.begin(), taken.end()).size(), taken.size()) << "each once";
    EXPECT_FALSE(taken.contains(mine));
    std::thread([] { EXPECT_NE(LarynthThreadNumber(), 0U) << "numbers come back"; }).join();
}
