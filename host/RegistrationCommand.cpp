// SPDX-License-Identifier: MIT
#include "host/RegistrationCommand.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <stdexcept>

#include <larynth/Registry.h>

#include "host/Errors.h"
#include "host/OutputFile.h"
#include "host/OwnModules.h"

namespace larynth {
namespace {

void RequireFile(const std::string& module) {
    std::error_code error;
    if (!std::filesystem::exists(module, error)) {
        throw BadInput(module + ": expected a module, found no such file");
    }
    if (!std::filesystem::is_regular_file(module, error)) {
        throw BadInput(module + ": expected a module, found no regular file");
    }
}

[[noreturn]] void RaiseLastError(HRESULT hr) {
    if (hr == CO_E_DLLNOTFOUND || hr == CO_E_ERRORINDLL) {
        throw BadInput(std::string("expected a component module: ") + LarynthLastError());
    }
    throw std::runtime_error(LarynthLastError());
}

}  // namespace

RegistrationCommand::RegistrationCommand(CLI::App& program, Deed deed)
    : deed_(deed),
      command_(deed == Deed::kRegister
                   ? program.add_subcommand("register", "Write modules' classes into the registration store")
                   : program.add_subcommand("unregister", "Take modules' classes out of the store")) {
    command_->add_option("MODULE", modules_, "Module files; the two that came with this program if none");
}

bool RegistrationCommand::IsChosen() const { return command_->parsed(); }

void RegistrationCommand::Run() const {
    const std::vector<std::string> modules = modules_.empty() ? OwnModules() : modules_;
    for (const std::string& module : modules) RequireFile(module);
    for (const std::string& module : modules) RunOn(module);
}

void RegistrationCommand::RunOn(const std::string& module) const {
    const bool registers = deed_ == Deed::kRegister;
    const HRESULT hr =
        registers ? LarynthRegisterModule(module.c_str()) : LarynthUnregisterModule(module.c_str());
    if (hr != S_OK) RaiseLastError(hr);  // S_FALSE: something could not be unregistered
    OutputFile output("-");
    output.Write((registers ? "registered " : "unregistered ") + module + '\n');
    output.Commit();
}

}  // namespace larynth
