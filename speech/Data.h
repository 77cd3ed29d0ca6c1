// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

namespace larynth {

/// A file of speech/data, compiled in.
struct CompiledFile {
    std::string_view name, text;
};

/// All of them; the build makes the definition.
std::span<const CompiledFile> DataFiles() noexcept;

/// The text of one that there is.
std::string_view DataFile(std::string_view name) noexcept;

}  // namespace larynth
