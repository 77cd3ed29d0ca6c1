// SPDX-License-Identifier: MIT
#include <filesystem>
#include <mutex>
#include <string>

#include <larynth/Runtime.h>
#include <larynth/Speech.h>

namespace larynth {

std::vector<std::string> ModulePaths() {
    std::string runtime(MAX_PATH, '\0');
    const DWORD length = GetModuleFileNameA(GetModuleHandleA("LarynthRuntime.dll"), runtime.data(), MAX_PATH);
    if (length >= MAX_PATH) throw Error(E_FAIL, "cannot tell where the runtime's library lies");
    runtime.resize(length);
    const auto folder = std::filesystem::path(runtime).parent_path();
    return {(folder / "Larynth.dll").string(), (folder / "LarynthCompanion.dll").string()};
}

void LoadModules() {
    static std::once_flag loaded;
    std::call_once(loaded, [] {
        for (const std::string& module : ModulePaths()) RequireRuntime(LarynthLoadModule(module.c_str()));
    });
}

}  // namespace larynth
