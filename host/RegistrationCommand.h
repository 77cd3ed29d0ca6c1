// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace larynth {

/// `larynth register` and `larynth unregister`: the classes of modules in the user's registration store. One
/// line for each module says what was done.
class RegistrationCommand {
  public:
    enum class Deed { kRegister, kUnregister };

    /// Adds the subcommand; the object must outlive the parsing.
    RegistrationCommand(CLI::App& program, Deed deed);
    RegistrationCommand(const RegistrationCommand&) = delete;
    RegistrationCommand& operator=(const RegistrationCommand&) = delete;

    /// Whether the command line named this subcommand.
    bool IsChosen() const;

    /// Stops at the first module that fails. Raises BadInput for a file that is no module, before anything
    /// was done where it does not exist; std::runtime_error for what goes wrong while working.
    void Run() const;

  private:
    void RunOn(const std::string& module) const;

    Deed deed_;
    CLI::App* command_;
    std::vector<std::string> modules_;  // as the user named them; empty: the program's own
};

}  // namespace larynth
