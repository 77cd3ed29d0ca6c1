// SPDX-License-Identifier: MIT
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <thread>
#include <ucontext.h>
#include <unistd.h>

#include <larynth/Runtime.h>

#include "runtime/memory/MemoryProbe.h"
#include "tests/support/InThreads.h"

namespace {

using larynth::Access;

constexpr std::size_t kPage = 4096;

/// Consecutive pages of the test's own.
class Pages {
  public:
    explicit Pages(std::size_t count, int file = -1)
        : size_(count * kPage),
          start_(static_cast<char*>(mmap(nullptr, size_, PROT_READ | PROT_WRITE,
                                         MAP_PRIVATE | (file < 0 ? MAP_ANONYMOUS : 0), file, 0))) {}
    ~Pages() { munmap(start_, size_); }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    char* operator[](std::size_t page) const { return start_ + page * kPage; }
    void Protect(std::size_t page, int protection) const {
        ASSERT_EQ(mprotect((*this)[page], kPage, protection), 0);
    }

  private:
    std::size_t size_;
    char* start_;
};

std::uintptr_t Address(const void* memory) { return reinterpret_cast<std::uintptr_t>(memory); }

/// The window as a function sees it that was handed an address.
[[gnu::noinline]] bool Sees(std::uintptr_t address, std::size_t size) {
    return larynth::InStackWindow(larynth::OwnStackBounds(), address, size);
}

const char kConstant[] = "const data";

struct Range {
    const char* what;
    const void* address;
    std::size_t size;
    bool readable, writable;
};

void ExpectProbed(const Range& range) {
    const auto& [what, address, size, readable, writable] = range;
    EXPECT_EQ(IsBadReadPtr(address, size), readable ? FALSE : TRUE) << what;
    EXPECT_EQ(IsBadWritePtr(const_cast<void*>(address), size), writable ? FALSE : TRUE) << what;
    // Also where the stack window does not spare the question.
    EXPECT_EQ(larynth::CanAccess(Address(address), size, Access::kRead), readable) << what;
    EXPECT_EQ(larynth::CanAccess(Address(address), size, Access::kWrite), writable) << what;
}

}  // namespace

TEST(MemoryProbe, TellsWhatCanBeReadAndWritten) {
    if (sysconf(_SC_PAGESIZE) != kPage) GTEST_SKIP() << "the rows are for pages of 4096 bytes";
    double onStack[2] = {};
    const Pages pages(5);
    pages.Protect(2, PROT_READ);
    pages.Protect(3, PROT_NONE);
    const Range rows[] = {
        {"own stack", &onStack, sizeof(onStack), true, true},
        {"const data", kConstant, sizeof(kConstant), true, false},
        {"two good pages", pages[1] - 4, 8, true, true},
        {"into the read-only page", pages[2] - 4, 8, true, false},
        {"into the protected page", pages[3] - 4, 8, false, false},
        {"across the protected page", pages[0], 5 * kPage, false, false},
        {"not mapped", reinterpret_cast<void*>(16), 8, false, false},
        {"no user address", reinterpret_cast<void*>(~std::uintptr_t{0} - 15), 8, false, false},
    };
    for (const Range& row : rows) ExpectProbed(row);
    EXPECT_EQ(IsBadWritePtr(nullptr, 0), FALSE);
    EXPECT_EQ(IsBadWritePtr(nullptr, 1), TRUE);
    EXPECT_EQ(IsBadReadPtr(&onStack, SIZE_MAX), TRUE) << "wraps around";
    InThreads(1, [&](int) { EXPECT_EQ(IsBadWritePtr(&onStack, sizeof(onStack)), FALSE); });
    errno = 77;
    const BOOL bad = IsBadReadPtr(pages[3], 8);
    EXPECT_EQ(errno, 77);
    EXPECT_EQ(bad, TRUE);
}

TEST(MemoryProbe, TellsWhatLiesBeyondTheEndOfAFile) {
#ifdef LARYNTH_EMULATED
    GTEST_SKIP() << "an emulator ends where the system would refuse";
#endif
    std::FILE* const tenBytes = std::tmpfile();
    ASSERT_EQ(write(fileno(tenBytes), "ten bytes!", 10), 10);
    const Pages file(2, fileno(tenBytes));
    ExpectProbed({"file", file[0], 10, true, true});
    ExpectProbed({"file into what is beyond its end", file[1] - 4, 8, false, false});
    std::fclose(tenBytes);
}

TEST(StackWindow, HoldsWhatTheCallersOfTheThreadHaveOnTheirStack) {
    double local[4] = {};
    const std::uintptr_t base = larynth::OwnStackBounds().high, address = Address(local);
    const struct {
        const char* what;
        std::uintptr_t address;
        std::size_t size;
        bool seen;
    } rows[] = {{"a local", address, sizeof(local), true},
                {"up to the end", address, base - address, true},
                {"beyond the end", address, base - address + 1, false},
                {"wraps around", address, SIZE_MAX, false},
                {"below every frame: dead, or not even mapped", address - 65536, 8, false}};
    for (const auto& row : rows) EXPECT_EQ(Sees(row.address, row.size), row.seen) << row.what;
    InThreads(1, [&](int own) {
        EXPECT_FALSE(Sees(address, sizeof(local)));
        EXPECT_TRUE(Sees(Address(&own), sizeof(own)));
    });
}

TEST(StackWindow, DoesNotExistOnAStackThatIsNotTheThreads) {
    constexpr std::size_t kFiberPages = 64;
    const Pages stack(kFiberPages);
    ucontext_t own{}, caller{};
    ASSERT_EQ(getcontext(&own), 0);
    own.uc_stack.ss_sp = stack[0];
    own.uc_stack.ss_size = kFiberPages * kPage;
    own.uc_link = &caller;
    const auto inFiber = [] {
        int local = 0;
        EXPECT_FALSE(Sees(Address(&local), sizeof(local)));
        EXPECT_EQ(IsBadWritePtr(&local, sizeof(local)), FALSE);
    };
    makecontext(&own, inFiber, 0);
    ASSERT_EQ(swapcontext(&caller, &own), 0);
}

TEST(MemoryProbe, LosesNoStoreOfAnotherThread) {
    constexpr std::uint32_t kStores = 200'000;
    const Pages page(1);
    auto& word = *reinterpret_cast<std::uint32_t*>(page[0]);
    std::atomic<bool> done{false};
    std::thread prober([&] {
        while (!done) EXPECT_TRUE(larynth::CanAccess(Address(page[0]), 8, Access::kWrite));
    });
    for (std::uint32_t i = 0; i < kStores; ++i) std::atomic_ref(word).fetch_add(1);
    done = true;
    prober.join();
    EXPECT_EQ(word, kStores);
}
