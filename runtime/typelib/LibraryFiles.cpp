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
#include "runtime/classes/ClassObjects.h"
#include "runtime/classes/LoadedModule.h"
#include "runtime/store/RegistrationStore.h"
#include "runtime/typelib/TypeLibrary.h"

namespace larynth {

namespace {

/// Larger files are not read: a library of a thousand interfaces has less than 1 MiB.
constexpr std::uintmax_t kMaxFileSize = 8U << 20;

TypeLibraryContents Read(const std::string& path, std::span<const std::byte> bytes) {
    try {
        return ReadTypeLibrary(bytes);
    } catch (const BadTypeLibrary& error) {
        throw Failure(TYPE_E_INVDATAREAD, path + ": not a valid type library: " + error.what());
    }
}

TypeLibraryContents ReadFromModule(const std::string& path) {
    const LoadedModule module = LoadedModule::Load(ModuleFile(path, TYPE_E_CANTLOADLIBRARY).c_str());
    if (!module.InMemory()) {
        throw Failure(TYPE_E_CANTLOADLIBRARY, path + ": neither a type library nor a module: " + dlerror());
    }
    const std::optional<std::span<const std::byte>> resource = module.FindResource("TYPELIB", 1);
    if (!resource) throw Failure(TYPE_E_CANTLOADLIBRARY, path + ": the module carries no type library");
    return Read(path, *resource);
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
/// of type "TYPELIB". Raises Failure with the codes of LarynthLoadTypeLibrary.
TypeLibraryContents Load(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        throw Failure(TYPE_E_CANTLOADLIBRARY, path + ": no such file");
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw Failure(TYPE_E_CANTLOADLIBRARY, path + ": cannot be opened: " + std::strerror(errno));
    }
    if (!StartsAsLibrary(file)) return ReadFromModule(path);
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kMaxFileSize) {
        throw Failure(TYPE_E_INVDATAREAD, path + ": too large for a type library");
    }
    std::vector<std::byte> bytes(size);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file) throw Failure(TYPE_E_CANTLOADLIBRARY, path + ": cannot be read");
    return Read(path, bytes);
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

/// The code is that of the file that was tried last; the reason names both.
TypeLibraryContents LoadFor(const std::string& module) {
    try {
        return Load(module);
    } catch (const Failure& first) {
        try {
            return Load(LibraryFileBeside(module));
        } catch (const Failure& second) {
            throw Failure(second.Code(), std::string(first.what()) + "; " + second.what());
        }
    }
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
    const TypeLibraryContents library = LoadFor(module);
    ComPtr<ILarynthRegistry> registry;
    if (const HRESULT hr = LarynthOpenRegistry(registry.Put()); FAILED(hr)) return hr;
    if (const HRESULT hr = registry->Begin(); FAILED(hr)) return hr;
    const HRESULT written = Write(*registry.Get(), library, module);
    if (SUCCEEDED(written)) return registry->Commit();
    registry->Rollback();
    return written;
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthLoadTypeLibrary(LPCSTR sFile, ILarynthTypeLibrary** ppLibrary) {
    if (ppLibrary == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppLibrary = nullptr;
    if (sFile == nullptr) return larynth::Fail(E_POINTER, "null file name");
    return larynth::Contained([&] {
        *ppLibrary = new larynth::TypeLibrary(larynth::Load(sFile));
        return S_OK;
    });
}

HRESULT LARYNTH_CALL LarynthRegisterTypeLibrary(LPCSTR sModulePath) {
    if (sModulePath == nullptr) return larynth::Fail(E_POINTER, "null module path");
    return larynth::Contained([&] { return larynth::Register(sModulePath); });
}
