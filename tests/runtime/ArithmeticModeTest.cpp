// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <thread>

#include <larynth/ModuleRuntime.h>

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
    std::thread([] {
        LarynthFlushDenormals();
        ExpectFlushing(true);
    }).join();
    ExpectFlushing(false);
}
