// SPDX-License-Identifier: MIT
// The system's registry as a view, and type libraries in it.
#include <array>
#include <memory>
#include <string>
#include <utility>

#include <larynth/ComPtr.h>
#include <larynth/ModuleRuntime.h>
#include <larynth/Registry.h>
#include <larynth/TypeLibrary.h>

#include "runtime/Failure.h"
#include "runtime/SharedObject.h"
#include "runtime/windows/Text.h"

namespace larynth {

namespace {

/// In the order of their names in kLarynthRegistryRoots.
const std::array kRoots{HKEY_CLASSES_ROOT,     HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS,
                        HKEY_PERFORMANCE_DATA, HKEY_DYN_DATA,     HKEY_CURRENT_CONFIG};

struct KeyPath {
    HKEY root;
    std::wstring below;
};

KeyPath ParseKey(LPCSTR key) {
    if (key == nullptr) throw Failure(E_POINTER, "null pointer");
    const std::string_view path = key;
    const std::size_t end = path.find('\\');
    for (std::size_t i = 0; i < kRoots.size(); ++i) {
        if (path.substr(0, end) != kLarynthRegistryRoots[i].Name) continue;
        return {kRoots[i], end == path.npos ? std::wstring() : Wide(path.substr(end + 1))};
    }
    throw Failure(E_INVALIDARG, std::string(path) + ": expected a root key such as HKEY_CLASSES_ROOT");
}

/// Passes when the system reports success; its reason otherwise, under `code` or as a key that is not there.
void Check(LSTATUS status, LPCSTR key, HRESULT code) {
    if (status == ERROR_SUCCESS) return;
    if (status == ERROR_FILE_NOT_FOUND || status == ERROR_NO_MORE_ITEMS) throw Failure(REGDB_E_KEYMISSING);
    const std::string reason = std::system_category().message(static_cast<int>(status));
    throw Failure(code, std::string(key) + ": " + reason);
}

struct CloseKey {
    void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};
using OpenKey = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

OpenKey OpenToRead(LPCSTR key) {
    const KeyPath path = ParseKey(key);
    HKEY open = nullptr;
    Check(RegOpenKeyExW(path.root, path.below.c_str(), 0, KEY_READ, &open), key, REGDB_E_READREGDB);
    return OpenKey(open);
}

class SystemRegistry final : public SharedObject<ILarynthRegistry> {
  public:
    // What is written is there at once.
    HRESULT LARYNTH_CALL Begin() noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL Commit() noexcept override { return S_OK; }
    HRESULT LARYNTH_CALL Rollback() noexcept override { return E_NOTIMPL; }

    HRESULT LARYNTH_CALL CreateKey(LPCSTR sKey) noexcept override {
        return Contained([&] { return Create(sKey), S_OK; });
    }
    HRESULT LARYNTH_CALL DeleteKey(LPCSTR sKey) noexcept override;
    HRESULT LARYNTH_CALL SetValue(LPCSTR sKey, LPCSTR sName, LPCSTR sValue) noexcept override;
    HRESULT LARYNTH_CALL GetValue(LPCSTR sKey, LPCSTR sName, LPCSTR* psValue) noexcept override;
    HRESULT LARYNTH_CALL GetCounts(LPCSTR sKey, int* pnSubkeys, int* pnValues) noexcept override;
    HRESULT LARYNTH_CALL GetSubkey(LPCSTR sKey, int nIndex, LPCSTR* psName) noexcept override;

  private:
    static OpenKey Create(LPCSTR key) {
        const KeyPath path = ParseKey(key);
        HKEY open = nullptr;
        Check(RegCreateKeyExW(path.root, path.below.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                              nullptr, &open, nullptr),
              key, REGDB_E_WRITEREGDB);
        return OpenKey(open);
    }
    HRESULT Give(std::string text, LPCSTR* out) {
        text_ = std::move(text);
        return Put(out, text_.c_str());
    }

    std::string text_;  // the one given out last
};

HRESULT SystemRegistry::DeleteKey(LPCSTR sKey) noexcept {
    return Contained([&] {
        const KeyPath path = ParseKey(sKey);
        if (path.below.empty()) throw Failure(E_INVALIDARG, std::string(sKey) + ": a root key stays");
        const LSTATUS status = RegDeleteTreeW(path.root, path.below.c_str());
        if (status == ERROR_FILE_NOT_FOUND) return S_FALSE;
        Check(status, sKey, REGDB_E_WRITEREGDB);
        return S_OK;
    });
}

HRESULT SystemRegistry::SetValue(LPCSTR sKey, LPCSTR sName, LPCSTR sValue) noexcept {
    return Contained([&] {
        if (sName == nullptr || sValue == nullptr) throw Failure(E_POINTER, "null pointer");
        const std::wstring text = Wide(sValue);
        const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
        Check(RegSetValueExW(Create(sKey).get(), Wide(sName).c_str(), 0, REG_SZ,
                             reinterpret_cast<const BYTE*>(text.c_str()), size),
              sKey, REGDB_E_WRITEREGDB);
        return S_OK;
    });
}

HRESULT SystemRegistry::GetValue(LPCSTR sKey, LPCSTR sName, LPCSTR* psValue) noexcept {
    return Contained([&] {
        if (sName == nullptr) throw Failure(E_POINTER, "null pointer");
        const OpenKey key = OpenToRead(sKey);
        const std::wstring name = Wide(sName);
        DWORD size = 0;
        const auto read = [&](wchar_t* text) {
            return RegGetValueW(key.get(), nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, text, &size);
        };
        Check(read(nullptr), sKey, REGDB_E_READREGDB);
        std::wstring text(size / sizeof(wchar_t), L'\0');
        Check(read(text.data()), sKey, REGDB_E_READREGDB);
        return Give(Utf8(text.c_str()), psValue);
    });
}

HRESULT SystemRegistry::GetCounts(LPCSTR sKey, int* pnSubkeys, int* pnValues) noexcept {
    return Contained([&] {
        if (!CanWrite(pnSubkeys) || !CanWrite(pnValues)) throw Failure(E_POINTER, "null pointer");
        const OpenKey key = OpenToRead(sKey);
        DWORD subkeys = 0, values = 0;
        Check(RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values,
                               nullptr, nullptr, nullptr, nullptr),
              sKey, REGDB_E_READREGDB);
        // The system counts a default value that was set.
        if (RegQueryValueExW(key.get(), nullptr, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS)
            --values;
        *pnSubkeys = static_cast<int>(subkeys);
        *pnValues = static_cast<int>(values);
        return S_OK;
    });
}

HRESULT SystemRegistry::GetSubkey(LPCSTR sKey, int nIndex, LPCSTR* psName) noexcept {
    return Contained([&] {
        std::array<wchar_t, 256> name;  // the longest, with its end
        DWORD length = name.size();
        if (nIndex < 0) return REGDB_E_KEYMISSING;
        Check(RegEnumKeyExW(OpenToRead(sKey).get(), static_cast<DWORD>(nIndex), name.data(), &length, nullptr,
                            nullptr, nullptr, nullptr),
              sKey, REGDB_E_READREGDB);
        return Give(Utf8({name.data(), length}), psName);
    });
}

using Library = ComPtr<ITypeLib>;

HRESULT Load(const std::string& path, Library& library) {
    return LoadTypeLibEx(Wide(path).c_str(), REGKIND_NONE, library.Put());
}

HRESULT RegisterLibraryOf(const std::string& module) {
    Library library;
    HRESULT hr = Load(module, library);
    // The last dot counts, in a folder's name too.
    if (FAILED(hr)) hr = Load(module.substr(0, module.find_last_of('.')) + ".tlb", library);
    if (FAILED(hr)) return Fail(hr, "%s: the type library cannot be loaded", module.c_str());
    std::wstring path = Wide(module);
    std::wstring folder = path.substr(0, path.find_last_of(L"\\/"));
    hr = RegisterTypeLib(library.Get(), path.data(), folder.data());
    return FAILED(hr) ? Fail(hr, "%s: the type library cannot be registered", module.c_str()) : hr;
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthOpenRegistry(ILarynthRegistry** ppRegistry) {
    if (ppRegistry == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppRegistry = nullptr;
    return larynth::Contained([&] {
        *ppRegistry = new larynth::SystemRegistry;
        return S_OK;
    });
}

HRESULT LARYNTH_CALL LarynthRegisterTypeLibrary(LPCSTR sModulePath) {
    if (sModulePath == nullptr) return larynth::Fail(E_POINTER, "null module path");
    return larynth::Contained([&] { return larynth::RegisterLibraryOf(sModulePath); });
}
