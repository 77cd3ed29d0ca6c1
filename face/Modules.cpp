// SPDX-License-Identifier: MIT
#include <bit>
#include <dlfcn.h>
#include <filesystem>
#include <mutex>

#include <larynth/Runtime.h>
#include <larynth/Speech.h>

namespace larynth {

std::vector<std::string> ModulePaths() {
    Dl_info runtime{};
    if (dladdr(std::bit_cast<void*>(&LarynthLoadModule), &runtime) == 0) {
        throw Error(E_FAIL, "cannot tell where the runtime's library lies");
    }
    const std::filesystem::path library = runtime.dli_fname;
    const auto folder = std::filesystem::canonical(library.parent_path()) / "larynth";
    return {(folder / "Larynth.so").string(), (folder / "LarynthCompanion.so").string()};
}

void LoadModules() {
    static std::once_flag loaded;
    std::call_once(loaded, [] {
        for (const std::string& module : ModulePaths()) RequireRuntime(LarynthLoadModule(module.c_str()));
    });
}

}  // namespace larynth
