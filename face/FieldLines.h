// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "input/Text.h"

namespace larynth {

/// The lines of a text file that are neither blank nor a comment ('#'), each as fields between commas,
/// without blanks around them.
class FieldLines {
  public:
    /// `fileName` serves messages. The input must live as long as this object.
    FieldLines(std::istream& input, std::string fileName) : lines_(input, std::move(fileName)) {}

    /// Moves to the next such line; false behind the last one. Raises BadInput.
    bool Next();

    const std::vector<std::string_view>& Fields() const noexcept { return fields_; }  ///< Parts of the line.
    std::string_view End() const { return lines_.Line().substr(lines_.Line().size()); }

    /// A place in the current line, or in the one behind the last.
    TextPosition At(std::string_view part) const { return lines_.At(part); }
    TextPosition Beginning() const { return lines_.At(1); }

    /// Raises BadInput: `expected`, found the field.
    [[noreturn]] void Fail(std::string_view field, const std::string& expected) const;

  private:
    TextLines lines_;
    std::vector<std::string_view> fields_;
};

}  // namespace larynth
