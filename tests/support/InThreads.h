// SPDX-License-Identifier: MIT
#pragma once

#include <thread>
#include <vector>

/// Calls work(0) to work(count - 1), each in a thread of its own, and waits for all of them.
template <class Work>
void InThreads(int count, Work work) {
    std::vector<std::jthread> threads;
    for (int i = 0; i < count; ++i) threads.emplace_back([&work, i] { work(i); });
}
