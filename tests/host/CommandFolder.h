// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>

#include "tests/support/Content.h"

namespace larynth::test {

/// What a command line left behind.
struct CommandResult {
    int status;       ///< Exit status; 128 + signal for a killed command, as the shell says it.
    std::string out;  ///< Standard output.
    std::string err;  ///< Standard error.
};

/// A folder of its own in which command lines run with `larynth` on the path and `store.db` as registration
/// store. Removed with all that is in it.
class CommandFolder {
  public:
    CommandFolder() {
        umask(022);  // a store that others could write is refused
        if (mkdtemp(root_.data()) == nullptr) throw std::runtime_error("no temporary folder");
        std::filesystem::create_directory(Path(""));
    }
    CommandFolder(CommandFolder&&) = delete;
    ~CommandFolder() { std::filesystem::remove_all(root_); }

    /// Runs a line of shell.
    CommandResult Run(const std::string& line) const {
        const std::string script = "cd '" + Path("") +
                                   "' && export LARYNTH_REGISTRY=\"$PWD/store.db\" PATH='" LARYNTH_COMMAND_DIR
                                   "':\"$PATH\" && ( " +
                                   line + "\n) >../out 2>../err";
        const int status = std::system(script.c_str());
        const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        return {code, Read("../out"), Read("../err")};
    }

    std::string Path(const std::string& name) const { return root_ + "/work/" + name; }
    void Write(const std::string& name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
    }
    /// Empty for a file that does not exist.
    std::string Read(const std::string& name) const { return ContentOf(Path(name)); }
    /// The names of everything in the folder, in order; hidden names too.
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Path("")))
            names.insert(entry.path().filename());
        return names;
    }

  private:
    std::string root_ = std::filesystem::temp_directory_path() / "larynth-test-XXXXXX";
};

}  // namespace larynth::test
