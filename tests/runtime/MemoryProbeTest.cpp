// SPDX-License-Identifier: MIT
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <larynth/Runtime.h>

#include "runtime/memory/MemoryProbe.h"

namespace {

using larynth::Access;

std::size_t PageSize() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }

/// Consecutive pages of the test's own, each with a protection of its own.
class Pages {
  public:
    Pages(std::size_t count, int protection, int file = -1, int sharing = MAP_PRIVATE)
        : count_(count),
          start_(static_cast<char*>(mmap(nullptr, count * PageSize(), protection,
                                         sharing | (file < 0 ? MAP_ANONYMOUS : 0), file, 0))) {
        EXPECT_NE(start_, MAP_FAILED);
    }
    ~Pages() { munmap(start_, count_ * PageSize()); }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    char* operator[](std::size_t page) const { return start_ + page * PageSize(); }
    void Protect(std::size_t page, int protection) const {
        EXPECT_EQ(mprotect((*this)[page], PageSize(), protection), 0);
    }

  private:
    std::size_t count_;
    char* start_;
};

/// A file of ten bytes without a name.
class SmallFile {
  public:
    SmallFile() : stream_(std::tmpfile()) { EXPECT_EQ(write(Number(), "ten bytes!", 10), 10); }
    ~SmallFile() { std::fclose(stream_); }
    SmallFile(const SmallFile&) = delete;
    SmallFile& operator=(const SmallFile&) = delete;

    int Number() const { return fileno(stream_); }

  private:
    std::FILE* stream_;
};

struct Row {
    const char* what;
    const void* address;
    std::size_t size;
    bool readable;
    bool writable;
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.what; }

const char kConstant[] = "const data";

class MemoryProbe : public testing::Test {
  protected:
    /// Memory of every kind. Sizes are above 0 and no range wraps around.
    std::vector<Row> Rows() {
        const std::size_t page = PageSize();
        pages_.Protect(2, PROT_READ);
        pages_.Protect(3, PROT_NONE);
        return {
            {"own stack", &onStack_, sizeof(onStack_), true, true},
            {"heap", heap_.get(), 1000, true, true},
            {"const data", kConstant, sizeof(kConstant), true, false},
            {"one byte", pages_[0], 1, true, true},
            {"last byte of a page", pages_[1] - 1, 1, true, true},
            {"two good pages", pages_[1] - 4, 8, true, true},
            {"last byte before the read-only page", pages_[2] - 8, 8, true, true},
            {"into the read-only page", pages_[2] - 4, 8, true, false},
            {"read-only", pages_[2] + 16, 8, true, false},
            {"into the protected page", pages_[3] - 4, 8, false, false},
            {"protected", pages_[3] + 16, 8, false, false},
            {"across the protected page", pages_[0], 5 * page, false, false},
            {"not mapped", reinterpret_cast<void*>(16), 8, false, false},
            {"no user address", reinterpret_cast<void*>(~std::uintptr_t{0} - 15), 8, false, false},
            {"file", privateFile_[0], 10, true, true},
            {"file beyond its end", privateFile_[1], 8, false, false},
            {"file into what is beyond its end", privateFile_[1] - 4, 8, false, false},
            {"shared file", sharedFile_[0], 10, true, false},
            {"shared file beyond its end", sharedFile_[1], 8, false, false},
        };
    }

  private:
    double onStack_[2] = {};
    std::unique_ptr<char[]> heap_ = std::make_unique<char[]>(1000);
    SmallFile file_;
    Pages pages_{5, PROT_READ | PROT_WRITE};
    Pages privateFile_{2, PROT_READ | PROT_WRITE, file_.Number()};
    Pages sharedFile_{2, PROT_READ, file_.Number(), MAP_SHARED};
};

bool CanAccess(const Row& row, Access access) {
    return larynth::CanAccess(reinterpret_cast<std::uintptr_t>(row.address), row.size, access);
}

BOOL IsBadToWrite(const void* address, std::size_t size) {
    return IsBadWritePtr(const_cast<void*>(address), size);
}

}  // namespace

TEST_F(MemoryProbe, TellsWhatCanBeReadAndWritten) {
    for (const Row& row : Rows()) {
        EXPECT_EQ(IsBadReadPtr(row.address, row.size), row.readable ? FALSE : TRUE) << row;
        EXPECT_EQ(IsBadToWrite(row.address, row.size), row.writable ? FALSE : TRUE) << row;
    }
}

TEST_F(MemoryProbe, TellsTheSameWithoutTheStackWindow) {
    for (const Row& row : Rows()) {
        EXPECT_EQ(CanAccess(row, Access::kRead), row.readable) << row;
        EXPECT_EQ(CanAccess(row, Access::kWrite), row.writable) << row;
    }
}

TEST_F(MemoryProbe, AcceptsNoBytesAnywhereAndNoRangeThatWrapsAround) {
    const Pages none(1, PROT_NONE);
    char local = 0;
    for (const void* anywhere : {static_cast<const void*>(nullptr), static_cast<const void*>(none[0])}) {
        EXPECT_EQ(IsBadReadPtr(anywhere, 0), FALSE);
        EXPECT_EQ(IsBadToWrite(anywhere, 0), FALSE);
        EXPECT_EQ(IsBadReadPtr(anywhere, 1), TRUE);
        EXPECT_EQ(IsBadToWrite(anywhere, 1), TRUE);
    }
    EXPECT_EQ(IsBadReadPtr(&local, SIZE_MAX), TRUE);
    EXPECT_EQ(IsBadToWrite(&local, SIZE_MAX), TRUE);
}

TEST_F(MemoryProbe, ReachesTheStackOfAnotherThread) {
    double local = 0.0;
    BOOL bad = TRUE;
    std::thread([&] { bad = IsBadWritePtr(&local, sizeof(local)); }).join();
    EXPECT_EQ(bad, FALSE);
}

TEST_F(MemoryProbe, LeavesMemoryAndErrorNumberAlone) {
    const Pages page(1, PROT_READ | PROT_WRITE);
    std::fill_n(page[0], PageSize(), char{0x5A});
    for (const Access access : {Access::kRead, Access::kWrite}) {
        EXPECT_TRUE(CanAccess({"", page[0], PageSize(), true, true}, access));
    }
    EXPECT_TRUE(std::all_of(page[0], page[0] + PageSize(), [](char c) { return c == 0x5A; }));

    errno = 77;
    EXPECT_EQ(IsBadReadPtr(reinterpret_cast<void*>(16), 8), TRUE);
    EXPECT_EQ(errno, 77);
}

TEST_F(MemoryProbe, LosesNoStoreOfAnotherThread) {
    constexpr std::uint32_t kStores = 200000;
    const Pages page(1, PROT_READ | PROT_WRITE);
    auto& word = *reinterpret_cast<std::uint32_t*>(page[0]);
    std::atomic<bool> done{false};
    std::thread prober([&] {
        while (!done) EXPECT_TRUE(CanAccess({"", page[0], 8, true, true}, Access::kWrite));
    });
    for (std::uint32_t i = 0; i < kStores; ++i) std::atomic_ref(word).fetch_add(1);
    done = true;
    prober.join();
    EXPECT_EQ(word, 200000U);
}
