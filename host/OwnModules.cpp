// SPDX-License-Identifier: MIT
#include "host/OwnModules.h"

#include <filesystem>

#include <larynth/Runtime.h>

#include "host/Errors.h"

namespace larynth {

std::vector<std::string> OwnModules() {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const auto folder = (program.parent_path() / LARYNTH_MODULES_FROM_PROGRAM).lexically_normal();
    return {(folder / "Larynth.so").string(), (folder / "LarynthCompanion.so").string()};
}

void LoadOwnModules() {
    for (const std::string& module : OwnModules()) {
        if (FAILED(LarynthLoadModule(module.c_str()))) RaiseLastError();
    }
}

}  // namespace larynth
