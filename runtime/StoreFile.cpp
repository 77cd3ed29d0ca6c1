// SPDX-License-Identifier: MIT
#include "runtime/StoreFile.h"

#include <cstdlib>
#include <filesystem>

namespace larynth {

namespace {

/// Empty for a variable that is not set.
std::filesystem::path PathIn(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr ? value : "";
}

}  // namespace

std::string StoreFile() {
    if (const auto file = PathIn("LARYNTH_REGISTRY"); !file.empty()) return absolute(file).string();
    // A relative data folder does not count: it would be another one in each working folder.
    if (const auto data = PathIn("XDG_DATA_HOME"); data.is_absolute()) return data / "larynth/registry.db";
    if (const auto home = PathIn("HOME"); !home.empty()) return home / ".local/share/larynth/registry.db";
    return {};
}

}  // namespace larynth
