// SPDX-License-Identifier: MIT
/// Files as the system's numbers.
#pragma once

#include <cstddef>
#include <fcntl.h>
#include <span>

namespace larynth {

/// With which files are opened: their bytes as they are, and for this program alone.
#ifdef _WIN32
inline constexpr int kFileFlags = O_BINARY | O_NOINHERIT;
#else
inline constexpr int kFileFlags = O_CLOEXEC;
#endif

/// Bytes that are read or written at a time.
inline constexpr std::size_t kBufferSize = 1 << 16;

/// A file for the time of its use alone; -1 and errno where none can be had.
int OpenScratch();

/// False and errno for a failure.
bool WriteAll(int descriptor, std::span<const char> bytes);

}  // namespace larynth
