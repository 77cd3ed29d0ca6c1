// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <thread>
#include <ucontext.h>

#include <larynth/Runtime.h>

#include "runtime/memory/MemoryProbe.h"

namespace {

std::uintptr_t Address(const void* memory) { return reinterpret_cast<std::uintptr_t>(memory); }

/// The window as a function sees it that was handed an address.
[[gnu::noinline]] bool Sees(std::uintptr_t address, std::size_t size) {
    return larynth::InStackWindow(address, size);
}

}  // namespace

TEST(StackWindow, HoldsWhatTheCallersOfTheThreadHaveOnTheirStack) {
    double local[4] = {};
    const std::uintptr_t base = larynth::OwnStackBounds().high;
    EXPECT_TRUE(Sees(Address(local), sizeof(local)));
    EXPECT_TRUE(Sees(Address(local), base - Address(local)));
    EXPECT_FALSE(Sees(Address(local), base - Address(local) + 1));
    EXPECT_FALSE(Sees(Address(local), SIZE_MAX));
    EXPECT_FALSE(Sees(Address(local) - 65536, 8));  // below every frame: dead, or not even mapped
    EXPECT_FALSE(Sees(base, 1));

    bool sameFromOtherThread = true;
    bool otherThreadsOwn = false;
    std::thread([&] {
        int own = 0;
        sameFromOtherThread = Sees(Address(local), sizeof(local));
        otherThreadsOwn = Sees(Address(&own), sizeof(own));
    }).join();
    EXPECT_FALSE(sameFromOtherThread);
    EXPECT_TRUE(otherThreadsOwn);
}

namespace {

/// A stack of the test's own, mapped low, with an inaccessible page between it and the thread's stack.
struct Fiber {
    static constexpr std::size_t kStackSize = 256 * 1024;
    static constexpr std::size_t kGuardSize = 4096;

    char* stack = static_cast<char*>(
        mmap(nullptr, kStackSize + kGuardSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ucontext_t own{};
    ucontext_t caller{};
    bool seesLocal = true;
    BOOL localIsBad = TRUE;
    BOOL guardIsBad = FALSE;

    ~Fiber() { munmap(stack, kStackSize + kGuardSize); }
};

constinit Fiber* running = nullptr;

void RunInFiber() {
    int local = 0;
    running->seesLocal = Sees(Address(&local), sizeof(local));
    running->localIsBad = IsBadWritePtr(&local, sizeof(local));
    running->guardIsBad = IsBadWritePtr(running->stack + Fiber::kStackSize, 8);
}

}  // namespace

TEST(StackWindow, DoesNotExistOnAStackThatIsNotTheThreads) {
    Fiber fiber;
    ASSERT_NE(fiber.stack, MAP_FAILED);
    ASSERT_EQ(mprotect(fiber.stack + Fiber::kStackSize, Fiber::kGuardSize, PROT_NONE), 0);
    ASSERT_EQ(getcontext(&fiber.own), 0);
    fiber.own.uc_stack.ss_sp = fiber.stack;
    fiber.own.uc_stack.ss_size = Fiber::kStackSize;
    fiber.own.uc_link = &fiber.caller;
    running = &fiber;
    makecontext(&fiber.own, RunInFiber, 0);
    ASSERT_EQ(swapcontext(&fiber.caller, &fiber.own), 0);
    EXPECT_FALSE(fiber.seesLocal);
    EXPECT_EQ(fiber.localIsBad, FALSE);
    EXPECT_EQ(fiber.guardIsBad, TRUE);
}
