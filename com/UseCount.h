// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include <larynth/ModuleRuntime.h>

namespace larynth {

/// Counts uses that many threads begin and end all the time, where it matters only now and then whether there
/// are any. A thread counts in a cache line of its own, without a locked operation: no thread waits for
/// another. A use may end on another thread than it began on.
class UseCount {
  public:
    void Begin(std::memory_order order = std::memory_order_release) noexcept {
        Increase(&Line::begun, order);
    }
    void End() noexcept { Increase(&Line::ended, std::memory_order_release); }

    /// Uses ever ended, ever begun. None is going on at one moment between the two questions if they are
    /// asked in this order and answered alike: nothing ends before it has begun.
    std::uint64_t Ended() const noexcept { return Sum(&Line::ended); }
    std::uint64_t Begun() const noexcept { return Sum(&Line::begun); }

  private:
    struct alignas(64) Line {
        std::atomic<std::uint64_t> begun = 0;
        std::atomic<std::uint64_t> ended = 0;
    };
    using Count = std::atomic<std::uint64_t> Line::*;

    void Increase(Count which, std::memory_order order) noexcept {
        const unsigned thread = LarynthThreadNumber();
        std::atomic<std::uint64_t>& count = lines_[thread].*which;
        if (thread == 0) {
            count.fetch_add(1, order);  // the line of all threads without a number
        } else {
            count.store(count.load(std::memory_order_relaxed) + 1, order);
        }
    }
    std::uint64_t Sum(Count which) const noexcept {
        std::uint64_t sum = 0;
        for (const Line& line : lines_) sum += (line.*which).load();
        return sum;
    }

    std::array<Line, kLarynthThreadNumbers> lines_;
};

}  // namespace larynth
