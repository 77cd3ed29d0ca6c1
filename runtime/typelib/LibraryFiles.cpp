// SPDX-License-Identifier: MIT
// Type libraries in files and modules, and where the store says that they are.
#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>
#include <larynth/TypeLibrary.h>

#include "runtime/Failure.h"
#include "runtime/classes/LoadedModule.h"
#include "runtime/store/RegistrationStore.h"
#include "runtime/typelib/TypeLibrary.h"

namespace larynth {

namespace {

/// Larger files are not read: a library of a thousand interfaces has less than 1 MiB.
constexpr std::uintmax_t kMaxFileSize = 64U << 20;

HRESULT Read(LPCSTR path, std::span<const std::byte> bytes, TypeLibraryContents& library) {
    try {
        library = ReadTypeLibrary(bytes);
        return S_OK;
    } catch (const BadTypeLibrary& error) {
        return Fail(TYPE_E_INVDATAREAD, "%s: not a valid type library: %s", path, error.what());
    }
}

HRESULT ReadFromModule(LPCSTR path, TypeLibraryContents& library) {
    // The loader would look for a name without a folder elsewhere.
    const LoadedModule module = LoadedModule::Load(std::filesystem::absolute(path).c_str());
    if (!module.InMemory()) {
        return Fail(TYPE_E_CANTLOADLIBRARY, "%s: neither a type library nor a module: %s", path, dlerror());
    }
    const std::optional<std::span<const std::byte>> resource = module.FindResource("TYPELIB", 1);
    if (!resource) return Fail(TYPE_E_CANTLOADLIBRARY, "%s: the module carries no type library", path);
    return Read(path, *resource, library);
}

bool StartsAsLibrary(std::ifstream& file) {
    char signature[4] = {};
    file.read(signature, sizeof(signature));
    const bool same = file.good() && std::memcmp(signature, "MSFT", sizeof(signature)) == 0;
    file.clear();
    file.seekg(0);
    return same;
}

/// Reads the library of a ".tlb" file or, for any other file, the one that the module carries as resource 1
/// of type "TYPELIB". Writes it and returns S_OK, or returns the codes of LarynthLoadTypeLibrary with the
/// reason kept for LarynthLastError(). Raises std::bad_alloc.
HRESULT LoadTypeLibraryFile(LPCSTR path, TypeLibraryContents& library) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return Fail(TYPE_E_CANTLOADLIBRARY, "%s: no such file", path);
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) return Fail(TYPE_E_CANTLOADLIBRARY, "%s: cannot be opened: %s", path, std::strerror(errno));
    if (!StartsAsLibrary(file)) return ReadFromModule(path, library);
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kMaxFileSize)
        return Fail(TYPE_E_INVDATAREAD, "%s: too large for a type library", path);
    std::vector<std::byte> bytes(size);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file) return Fail(TYPE_E_CANTLOADLIBRARY, "%s: cannot be read", path);
    return Read(path, bytes, library);
}

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
HRESULT LoadFor(const std::string& module, TypeLibraryContents& library) {
    if (SUCCEEDED(LoadTypeLibraryFile(module.c_str(), library))) return S_OK;
    const std::string first = LarynthLastError();
    const HRESULT hr = LoadTypeLibraryFile(LibraryFileBeside(module).c_str(), library);
    if (SUCCEEDED(hr)) return hr;
    const std::string second = LarynthLastError();
    return Fail(hr, "%s; %s", first.c_str(), second.c_str());
}

HRESULT Write(ILarynthRegistry& registry, const TypeLibraryContents& library, const std::string& module) {
    const std::string key = std::string("HKEY_CLASSES_ROOT\\TypeLib\\") + ClassText(library.Id) + "\\" +
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
    if (const HRESULT hr = LoadFor(module, library); FAILED(hr)) return hr;
    ComPtr<ILarynthRegistry> registry;
    if (const HRESULT hr = LarynthOpenRegistry(registry.Put()); FAILED(hr)) return hr;
    if (const HRESULT hr = registry->Begin(); FAILED(hr)) return hr;
    const HRESULT written = Write(*registry.Get(), library, module);
    return SUCCEEDED(written) ? registry->Commit()
                              : written;  // the release of the registry takes a half back
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthLoadTypeLibrary(LPCSTR sFile, ILarynthTypeLibrary** ppLibrary) {
    if (ppLibrary == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppLibrary = nullptr;
    if (sFile == nullptr) return larynth::Fail(E_POINTER, "null file name");
    return larynth::Contained([&] {
        larynth::TypeLibraryContents contents;
        const HRESULT hr = larynth::LoadTypeLibraryFile(sFile, contents);
        if (SUCCEEDED(hr)) *ppLibrary = new larynth::TypeLibrary(std::move(contents));
        return hr;
    });
}

HRESULT LARYNTH_CALL LarynthRegisterTypeLibrary(LPCSTR sModulePath) {
    if (sModulePath == nullptr) return larynth::Fail(E_POINTER, "null module path");
    return larynth::Contained([&] { return larynth::Register(sModulePath); });
}
