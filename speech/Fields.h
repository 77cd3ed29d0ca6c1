// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "input/Text.h"

namespace larynth {

/// The lines of a data file that say something, as fields separated by blanks: comments, which begin with #,
/// and empty lines are passed over.
class FieldLines {
  public:
    FieldLines(std::istream& input, std::string fileName) : lines_(input, std::move(fileName)) {}

    /// Moves to the next line that has a field; false behind the last one. Raises BadInput for text that is
    /// not UTF-8.
    bool Next();

    const std::vector<std::string_view>& Fields() const noexcept { return fields_; }

    /// Raises BadInput at a field, or at the beginning of the line.
    [[noreturn]] void Fail(std::string_view field, const std::string& expected) const;
    [[noreturn]] void Fail(const std::string& expected) const;

    /// A number within limits; Fail with `what` for anything else.
    double Number(std::string_view field, double least, double most, const std::string& what) const;

  private:
    TextLines lines_;
    std::vector<std::string_view> fields_;
};

}  // namespace larynth
