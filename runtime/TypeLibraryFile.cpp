// SPDX-License-Identifier: MIT
#include "runtime/TypeLibraryFile.h"

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <optional>

#include <larynth/ComPtr.h>
#include <larynth/TypeLibrary.h>

#include "runtime/LastError.h"
#include "runtime/LoadedModule.h"
#include "runtime/TypeLibrary.h"
#include "runtime/TypeLibraryReader.h"

namespace larynth {

namespace {

/// Larger files are not read: a library of a thousand interfaces has less than 1 MiB.
constexpr std::uintmax_t kMaxFileSize = 64U << 20;

HRESULT Read(LPCSTR path, std::span<const std::byte> bytes, TypeLibraryContents& library) {
    try {
        library = ReadTypeLibrary(FileBytes(bytes));
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

}  // namespace

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
