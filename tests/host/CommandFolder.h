// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace larynth::test {

/// What a command line left behind.
struct CommandResult {
    int status;       ///< Exit status; 128 + signal for a killed command, as the shell says it.
    std::string out;  ///< Standard output.
    std::string err;  ///< Standard error.
};

/// A folder of its own in which command lines run with `larynth` on the path. Removed with all that is in it.
class CommandFolder {
  public:
    CommandFolder();
    CommandFolder(const CommandFolder&) = delete;
    CommandFolder& operator=(const CommandFolder&) = delete;
    ~CommandFolder();

    /// Runs a line of shell.
    CommandResult Run(const std::string& line) const;

    std::filesystem::path Path(const std::string& name) const { return folder_ / name; }
    void Write(const std::string& name, const std::string& content) const;
    /// Empty for a file that does not exist.
    std::string Read(const std::string& name) const;
    /// The names of everything in the folder, in order; hidden names too.
    std::vector<std::string> Names() const;

  private:
    std::filesystem::path folder_;
    std::filesystem::path streams_;  // what the last command wrote, outside its folder
};

/// A whole file's bytes; empty when it cannot be read.
std::string FileContent(const std::filesystem::path& path);

/// 16-bit little-endian samples.
std::vector<int> SamplesOf(const std::string& bytes);

}  // namespace larynth::test
