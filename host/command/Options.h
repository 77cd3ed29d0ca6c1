// SPDX-License-Identifier: MIT
/// What the options of several commands have in common.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/audio/Sound.h"

namespace larynth {

/// Refuses an option's value.
[[noreturn]] void Refuse(const std::string& option, const std::string& expected, const std::string& found);

/// Refuses an empty name; CLI11's form of a check: what is wrong, or nothing.
std::string RefuseNoName(const std::string& file);

/// A number, which follows the same grammar as in a table: `parse` gives an optional one for a text.
template <class Target, class Parse>
CLI::Option* AddNumber(CLI::App& command, const std::string& name, Target& target, Parse parse,
                       const std::string& expected, const std::string& help) {
    return command.add_option_function<std::string>(
        name,
        [&target, parse, name, expected](const std::string& text) {
            const auto number = parse(text);
            if (!number) Refuse(name, expected, text);
            target = static_cast<decltype(Target(*number))>(*number);
        },
        help);
}

/// The format of the sound in a file of this name, or BadInput.
AudioFormat AudioFormatOfOutput(const std::string& path);

/// The files of one run of a command: nothing that is written may be something that is read, or another thing
/// that is written. "-" is standard input or output.
class UsedFiles {
  public:
    /// `meaning` serves messages, as "the input".
    void AddInput(const std::string& meaning, const std::string& path);
    /// Raises BadInput.
    void AddOutput(const std::string& option, const std::string& meaning, const std::string& path);

  private:
    std::vector<std::pair<std::string, std::string>> taken_;  // meanings and paths
    std::string standardOutput_;                              // what it serves; empty: nothing
};

}  // namespace larynth
