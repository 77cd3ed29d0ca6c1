// SPDX-License-Identifier: MIT
#include "runtime/classes/LoadedModule.h"

#include <dlfcn.h>
#include <filesystem>
#include <link.h>
#include <sys/auxv.h>

#include "runtime/Failure.h"

namespace larynth {

namespace {

/// The symbol `name` of the object itself, or null: dlsym also finds those of the objects it depends on.
template <class Entry>
Entry OwnEntry(void* handle, const char* name) {
    void* const symbol = dlsym(handle, name);
    link_map* own = nullptr;
    if (symbol == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &own) != 0) return nullptr;
    Dl_info unused{};
    void* home = nullptr;
    if (dladdr1(symbol, &unused, &home, RTLD_DL_LINKMAP) == 0 || home != own) return nullptr;
    return reinterpret_cast<Entry>(symbol);
}

void Close(void* handle) {
    if (handle != nullptr) dlclose(handle);
}

}  // namespace

std::string ModuleFile(const std::string& path, HRESULT code) {
    if (path.starts_with('/')) return path;
    if (getauxval(AT_SECURE) != 0)
        throw Failure(code, path + ": a privileged process needs an absolute path");
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(path, error);
    if (error) throw Failure(code, path + ": " + error.message());
    return file;
}

LoadedModule::LoadedModule(void* handle) : handle_(handle, Close) {
    if (handle == nullptr) return;
    getClassObject_ = OwnEntry<GetClassObjectEntry>(handle, "DllGetClassObject");
    canUnloadNow_ = OwnEntry<CanUnloadNowEntry>(handle, "DllCanUnloadNow");
    resources_ = OwnEntry<const Resource*>(handle, "LarynthResources");
}

LoadedModule::RegisteringEntry LoadedModule::RegistrationEntry(const char* name) const {
    return OwnEntry<RegisteringEntry>(handle_.get(), name);
}

std::optional<std::span<const std::byte>> LoadedModule::FindResource(const char* type, LONG number) const {
    return resources_ != nullptr ? FindInTable(resources_, type, number) : std::nullopt;
}

LoadedModule LoadedModule::Find(const char* path) {
    const char* const name = *path != '\0' ? path : nullptr;  // null is the program itself
    return LoadedModule(dlopen(name, RTLD_LAZY | RTLD_LOCAL | RTLD_NOLOAD));
}

LoadedModule LoadedModule::Load(const char* path) {
    return LoadedModule(dlopen(path, RTLD_NOW | RTLD_LOCAL));
}

}  // namespace larynth
