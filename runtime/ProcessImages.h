// SPDX-License-Identifier: MIT
/// What the loader has brought into the process: the program and its shared objects.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace larynth {

/// How many times the loader has loaded or unloaded something; it only grows. A few dozen nanoseconds.
std::uint64_t CountImageChanges() noexcept;

struct ProcessImages {
    std::uint64_t changes = 0;       ///< CountImageChanges() at the time
    std::vector<std::string> paths;  ///< as the loader knows them, in load order; "" is the program
};

/// Raises std::bad_alloc.
ProcessImages ListProcessImages();

}  // namespace larynth
