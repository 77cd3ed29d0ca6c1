// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <istream>
#include <string>

namespace larynth {

/// A file to read. Raises BadInput when it cannot be opened.
class InputFile {
  public:
    explicit InputFile(const std::string& path);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// The same, but "-" is standard input.
    static InputFile FromArgument(const std::string& path);

    const std::string& Name() const noexcept { return name_; }  ///< For messages.
    std::istream& Stream();

    /// The bytes that are left. Raises BadInput when they cannot be read.
    std::string ReadAll();

  private:
    struct StandardInput {};
    explicit InputFile(StandardInput) : name_("<stdin>"), isStandardInput_(true) {}

    std::string name_;
    bool isStandardInput_ = false;
    std::ifstream file_;
};

}  // namespace larynth
