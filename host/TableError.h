// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "host/Errors.h"

namespace larynth {

/// A place in a text file.
struct TextPosition {
    std::string file;
    int line;    ///< From 1.
    int column;  ///< From 1, counting characters, not bytes.
};

/// A table that does not follow the format: "FILE:LINE:COLUMN: expected …".
class TableError : public BadInput {
  public:
    /// `expected` completes the sentence "expected …".
    TableError(const TextPosition& where, const std::string& expected)
        : BadInput(where.file + ":" + std::to_string(where.line) + ":" + std::to_string(where.column) +
                   ": expected " + expected),
          where_(where),
          expected_(expected) {}

    const TextPosition& Where() const noexcept { return where_; }
    const std::string& Expected() const noexcept { return expected_; }

  private:
    TextPosition where_;
    std::string expected_;
};

}  // namespace larynth
