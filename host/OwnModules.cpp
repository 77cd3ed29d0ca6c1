// SPDX-License-Identifier: MIT
#include "host/OwnModules.h"

#include <bit>
#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>

#include <larynth/Runtime.h>

#include "host/Errors.h"

namespace larynth {

std::vector<std::string> OwnModules() {
    Dl_info runtime{};
    if (dladdr(std::bit_cast<void*>(&LarynthLoadModule), &runtime) == 0) {
        throw std::runtime_error("cannot tell where the runtime's library lies");
    }
    const std::filesystem::path library = runtime.dli_fname;
    const auto folder = std::filesystem::canonical(library.parent_path()) / "larynth";
    return {(folder / "Larynth.so").string(), (folder / "LarynthCompanion.so").string()};
}

void LoadOwnModules() {
    for (const std::string& module : OwnModules()) {
        if (FAILED(LarynthLoadModule(module.c_str()))) RaiseLastError();
    }
}

}  // namespace larynth
