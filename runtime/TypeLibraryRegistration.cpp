// SPDX-License-Identifier: MIT
#include <string>
#include <utility>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>
#include <larynth/TypeLibrary.h>

#include "runtime/ClassText.h"
#include "runtime/LastError.h"
#include "runtime/TypeLibraryFile.h"

namespace larynth {

namespace {

/// The module's path with ".tlb" for its extension. The last dot counts, in a folder's name too.
std::string LibraryFileBeside(const std::string& module) {
    return module.substr(0, module.find_last_of('.')) + ".tlb";
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The codes are those of the file that was tried last; the reasons that are kept name both.
HRESULT Load(const std::string& module, TypeLibraryContents& library) {
    if (SUCCEEDED(LoadTypeLibraryFile(module.c_str(), library))) return S_OK;
    const std::string first = LarynthLastError();
    const HRESULT hr = LoadTypeLibraryFile(LibraryFileBeside(module).c_str(), library);
    if (SUCCEEDED(hr)) return hr;
    const std::string second = LarynthLastError();
    return Fail(hr, "%s; %s", first.c_str(), second.c_str());
}

HRESULT Write(ILarynthRegistry& registry, const TypeLibraryContents& library, const std::string& module) {
    const std::string key = std::string("HKEY_CLASSES_ROOT\\TypeLib\\") + ClassText(library.Id).text + "\\" +
                            std::to_string(library.MajorVersion) + "." + std::to_string(library.MinorVersion);
    // Key and default value. The neutral language, 0, serves every caller.
    const std::pair<std::string, std::string> rows[] = {
        {key, library.HelpString},
        {key + "\\FLAGS", "0"},
        {key + "\\0\\module", module},
        {key + "\\HELPDIR", FolderOf(module)},
    };
    for (const auto& [path, value] : rows) {
        if (const HRESULT hr = registry.CreateKey(path.c_str()); FAILED(hr)) return hr;
        if (const HRESULT hr = registry.SetValue(path.c_str(), "", value.c_str()); FAILED(hr)) return hr;
    }
    return S_OK;
}

HRESULT Register(const std::string& module) {
    TypeLibraryContents library;
    if (const HRESULT hr = Load(module, library); FAILED(hr)) return hr;
    ComPtr<ILarynthRegistry> registry;
    if (const HRESULT hr = LarynthOpenRegistry(registry.Put()); FAILED(hr)) return hr;
    if (const HRESULT hr = registry->Begin(); FAILED(hr)) return hr;
    const HRESULT written = Write(*registry.Get(), library, module);
    return SUCCEEDED(written) ? registry->Commit()
                              : written;  // the release of the registry takes a half back
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthRegisterTypeLibrary(LPCSTR sModulePath) {
    if (sModulePath == nullptr) return larynth::Fail(E_POINTER, "null module path");
    return larynth::Contained([&] { return larynth::Register(sModulePath); });
}
