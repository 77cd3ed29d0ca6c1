// SPDX-License-Identifier: MIT
/// The files embedded in a module, and what a module knows of the file it was loaded from. Each module links
/// its own copy of what this declares, which looks at the module that it is a part of.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include <larynth/Base.h>

namespace larynth {

/// A file embedded in this module; the bytes live as long as the module is in memory, and a text has no
/// terminating zero.
std::optional<std::span<const std::byte>> OwnResource(LPCSTR type, LONG number) noexcept;

/// Absolute path of this module's file; empty when the system does not tell. Raises std::bad_alloc.
std::string OwnPath();

}  // namespace larynth
