// SPDX-License-Identifier: MIT
#include "host/Descriptors.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace larynth {

bool WriteAll(int descriptor, std::span<const char> bytes) {
    while (!bytes.empty()) {
        const std::size_t most = std::min<std::size_t>(bytes.size(), 1U << 30);  // a call takes 32 bits
        const ssize_t written = write(descriptor, bytes.data(), static_cast<unsigned>(most));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace larynth
