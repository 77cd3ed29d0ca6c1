// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <pybind11/pybind11.h>

namespace larynth {

/// Lets the user's interrupt through while the interpreter's lock is given up: long work asks from time to
/// time.
class Interrupts {
  public:
    /// Raises what the handler of a signal raised. Looks at the clock only each time it has been called
    /// kCalls times, and takes the lock, which may mean to wait, only when kPause is over.
    void Check() {
        if (++calls_ % kCalls != 0 || std::chrono::steady_clock::now() < next_) return;
        const pybind11::gil_scoped_acquire locked;
        if (PyErr_CheckSignals() != 0) throw pybind11::error_already_set();
        next_ = std::chrono::steady_clock::now() + kPause;
    }

  private:
    static constexpr unsigned kCalls = 64;
    static constexpr std::chrono::milliseconds kPause{50};

    unsigned calls_ = 0;
    std::chrono::steady_clock::time_point next_ = std::chrono::steady_clock::now() + kPause;
};

}  // namespace larynth
