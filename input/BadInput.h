// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace larynth {

/// A place in a text file.
struct TextPosition {
    std::string file;
    std::int64_t line = 0;    ///< From 1.
    std::int64_t column = 0;  ///< From 1, counting characters, not bytes.
};

/// The user's arguments or input cannot be used; everything else that goes wrong is a failure while working.
class BadInput : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;

    /// "FILE:LINE:COLUMN: expected …"; `expected` completes the sentence.
    BadInput(const TextPosition& where, const std::string& expected);

    /// The place in a text; lines and columns of 0 where there is none.
    const TextPosition& Where() const noexcept { return where_; }

  private:
    TextPosition where_;
};

}  // namespace larynth
