// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "input/Text.h"

namespace larynth {

/// The lines of a text file that are neither blank nor a comment ('#'), each as fields without blanks around
/// them.
class FieldLines {
  public:
    enum class Separator { Blanks, Comma };  // any number of blanks; a field between commas may be empty

    /// `fileName` serves messages. The input must live as long as this object.
    FieldLines(std::istream& input, std::string fileName, Separator separator)
        : lines_(input, std::move(fileName)), separator_(separator) {}

    /// Moves to the next such line; false behind the last one. Raises BadInput.
    bool Next();

    const std::vector<std::string_view>& Fields() const noexcept { return fields_; }  ///< Parts of the line.
    std::string_view End() const { return lines_.Line().substr(lines_.Line().size()); }

    /// A place in the current line, or in the one behind the last.
    TextPosition At(std::string_view part) const { return lines_.At(part); }
    TextPosition Beginning() const { return lines_.At(1); }

    /// Raises BadInput: `expected`, found the field.
    [[noreturn]] void Fail(std::string_view field, const std::string& expected) const;

    /// A number within limits; Fail with `what` for anything else.
    double Number(std::string_view field, double least, double most, const std::string& what) const;

  private:
    TextLines lines_;
    Separator separator_;
    std::vector<std::string_view> fields_;
};

}  // namespace larynth
