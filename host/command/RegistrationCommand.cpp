// SPDX-License-Identifier: MIT
#include "host/command/RegistrationCommand.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

#include <larynth/Registry.h>
#include <larynth/Speech.h>

#include "host/Files.h"
#include "host/command/Terminal.h"
#include "input/BadInput.h"

namespace larynth {
namespace {

using Deed = HRESULT (*)(LPCSTR);

void RequireFile(const std::string& module) {
    std::error_code error;
    if (!std::filesystem::exists(module, error)) {
        throw BadInput(module + ": expected a module, found no such file");
    }
    if (!std::filesystem::is_regular_file(module, error)) {
        throw BadInput(module + ": expected a module, found no regular file");
    }
}

/// Says, when it exists for a second, what the program may be waiting for.
class NoticeOfWaiting {
  public:
    explicit NoticeOfWaiting(const std::string& module)
        : clock_([module](const std::stop_token& end) {
              std::mutex mutex;
              std::unique_lock lock(mutex);
              std::condition_variable_any().wait_for(lock, end, std::chrono::seconds(1),
                                                     [] { return false; });
              if (end.stop_requested()) return;
              Say(module + ": waits up to a minute if another process is writing the registration store");
          }) {}

  private:
    std::jthread clock_;
};

HRESULT DoWithNotice(Deed deed, const std::string& module) {
    const NoticeOfWaiting notice(module);
    return deed(module.c_str());
}

void Do(Deed deed, const char* done, const std::vector<std::string>& modules) {
    for (const std::string& module : modules) RequireFile(module);
    for (const std::string& module : modules) {
        const HRESULT hr = DoWithNotice(deed, module);
        if (hr == CO_E_DLLNOTFOUND || hr == CO_E_ERRORINDLL) {
            throw BadInput(std::string("expected a component module: ") + LarynthLastError());
        }
        if (hr != S_OK) throw Error(hr, LarynthLastError());  // S_FALSE: something could not be unregistered
        WriteToStandardOutput(std::string(done) + ' ' + module + '\n');
    }
}

void Add(CLI::App& program, const char* name, const char* help, Deed deed, const char* done) {
    CLI::App* const command = program.add_subcommand(name, help);
    const auto modules = std::make_shared<std::vector<std::string>>();
    command->add_option("MODULE", *modules, "Module files; the two that came with this program if none")
        ->type_name("FILE");
    command->footer(std::string("Example:\n  larynth ") + name);
    command->callback([=] { Do(deed, done, modules->empty() ? ModulePaths() : *modules); });
}

}  // namespace

void AddRegistrationCommands(CLI::App& program) {
    Add(program, "register", "Write modules' classes into the registration store", LarynthRegisterModule,
        "registered");
    Add(program, "unregister", "Take modules' classes out of the store", LarynthUnregisterModule,
        "unregistered");
}

}  // namespace larynth
