// SPDX-License-Identifier: MIT
/// register-modules FILE...: writes the classes and type libraries of modules into the registration store
/// that LARYNTH_REGISTRY names. register-modules --undo FILE... takes them out. The files have absolute
/// paths. Exits with 1 at the first module that fails.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>
#include <larynth/Runtime.h>

namespace {

std::vector<std::string> KeysBelow(ILarynthRegistry& registry, const std::string& key) {
    std::vector<std::string> keys;
    LPCSTR name = nullptr;
    while (SUCCEEDED(registry.GetSubkey(key.c_str(), static_cast<int>(keys.size()), &name))) {
        keys.push_back(key + '\\' + name);
    }
    return keys;
}

bool IsIn(ILarynthRegistry& registry, const std::string& library, const std::string& module) {
    for (const std::string& version : KeysBelow(registry, library)) {
        LPCSTR file = nullptr;
        const std::string key = version + "\\0\\module";
        if (SUCCEEDED(registry.GetValue(key.c_str(), "", &file)) && module == file) return true;
    }
    return false;
}

/// Unregistering a module leaves its type library registered; a module that goes takes it along.
HRESULT RemoveTypeLibrary(const std::string& module) {
    ComPtr<ILarynthRegistry> registry;
    if (const HRESULT hr = LarynthOpenRegistry(registry.Put()); FAILED(hr)) return hr;
    for (const std::string& library : KeysBelow(*registry.Get(), "HKEY_CLASSES_ROOT\\TypeLib")) {
        if (!IsIn(*registry.Get(), library, module)) continue;
        if (const HRESULT hr = registry->Begin(); FAILED(hr)) return hr;
        if (const HRESULT hr = registry->DeleteKey(library.c_str()); FAILED(hr)) return hr;
        if (const HRESULT hr = registry->Commit(); FAILED(hr)) return hr;
    }
    return S_OK;
}

HRESULT Remove(const char* module) {
    const HRESULT hr = LarynthUnregisterModule(module);
    return hr == S_OK ? RemoveTypeLibrary(module) : hr;
}

}  // namespace

int main(int argc, char** argv) {
    const bool undo = argc > 1 && std::strcmp(argv[1], "--undo") == 0;
    for (int i = undo ? 2 : 1; i < argc; ++i) {
        const HRESULT hr = undo ? Remove(argv[i]) : LarynthRegisterModule(argv[i]);
        if (hr == S_OK) continue;
        std::fprintf(stderr, "register-modules: %s\n", LarynthLastError());
        return 1;
    }
    return 0;
}
