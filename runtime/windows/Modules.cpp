// SPDX-License-Identifier: MIT
// Modules that a host names by their files.
#include <mutex>
#include <string>
#include <string_view>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>

#include "runtime/Failure.h"
#include "runtime/windows/Text.h"

namespace larynth {

namespace {

using ClassObjectEntry = HRESULT(LARYNTH_CALL*)(REFCLSID, REFIID, void**);
using RegisteringEntry = HRESULT(LARYNTH_CALL*)();

template <class Entry>
Entry EntryOf(HMODULE module, LPCSTR name, LPCSTR path) {
    const FARPROC entry = GetProcAddress(module, name);
    if (entry == nullptr) throw Failure(CO_E_ERRORINDLL, std::string(path) + ": exports no " + name);
    return reinterpret_cast<Entry>(reinterpret_cast<void*>(entry));
}

/// Loads the module, what it needs from its own folder, as the system does with registered ones. It stays.
HMODULE Load(LPCSTR path) {
    if (path == nullptr) throw Failure(E_POINTER, "no path");
    std::wstring file(32768, L'\0');  // characters of a path, with its end
    const DWORD length =
        GetFullPathNameW(Wide(path).c_str(), static_cast<DWORD>(file.size()), file.data(), nullptr);
    if (length == 0 || length >= file.size())
        throw Failure(CO_E_DLLNOTFOUND, std::string(path) + ": no path");
    const HMODULE module = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (module != nullptr) return module;
    const std::string reason = std::system_category().message(static_cast<int>(GetLastError()));
    throw Failure(CO_E_DLLNOTFOUND, std::string(path) + ": " + reason);
}

HRESULT Call(LPCSTR path, LPCSTR entryPoint) {
    return Contained([&] {
        const auto entry = EntryOf<RegisteringEntry>(Load(path), entryPoint, path);
        Fail(S_OK, "%s", "");
        return entry();
    });
}

/// The first class identifier in a registry script; all zero where there is none.
CLSID ClassIn(std::string_view script) {
    constexpr std::size_t kLength = 38;  // with its braces
    CLSID id = GUID_NULL;
    for (std::size_t at = script.find('{'); at != script.npos; at = script.find('{', at + 1)) {
        if (SUCCEEDED(CLSIDFromString(Wide(script.substr(at, kLength)).c_str(), &id))) break;
    }
    return id;
}

/// What a module's registry scripts name are its classes, as far as it has them.
BOOL CALLBACK OfferClassOf(HMODULE module, LPCSTR type, LPSTR number, LONG_PTR getClassObject) {
    const HRESULT hr = Contained([&] {
        const HRSRC script = FindResourceA(module, number, type);
        const void* const text = LockResource(LoadResource(module, script));
        const CLSID id = ClassIn({static_cast<const char*>(text), SizeofResource(module, script)});
        const auto entry = reinterpret_cast<ClassObjectEntry>(getClassObject);
        ComPtr<IUnknown> object;
        DWORD registered = 0;
        if (FAILED(entry(id, IID_IUnknown, object.PutVoid()))) return S_OK;
        return CoRegisterClassObject(id, object.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registered);
    });
    return SUCCEEDED(hr) ? TRUE : FALSE;
}

}  // namespace

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthLoadModule(LPCSTR sPath) {
    return larynth::Contained([&] {
        const HMODULE module = larynth::Load(sPath);
        const auto entry = larynth::EntryOf<larynth::ClassObjectEntry>(module, "DllGetClassObject", sPath);
        static const HRESULT apartment = [] {
            CO_MTA_USAGE_COOKIE cookie;
            return CoIncrementMTAUsage(&cookie);
        }();
        if (FAILED(apartment)) throw larynth::Failure(apartment, "no apartment");
        const auto context = reinterpret_cast<LONG_PTR>(entry);
        if (EnumResourceNamesA(module, "REGISTRY", larynth::OfferClassOf, context) != FALSE) return S_OK;
        throw larynth::Failure(CO_E_ERRORINDLL, std::string(sPath) + ": its classes cannot be offered");
    });
}

HRESULT LARYNTH_CALL LarynthRegisterModule(LPCSTR sPath) { return larynth::Call(sPath, "DllRegisterServer"); }

HRESULT LARYNTH_CALL LarynthUnregisterModule(LPCSTR sPath) {
    return larynth::Call(sPath, "DllUnregisterServer");
}

/// The library stays for as long as the process: it holds the state of the noise.
extern "C" BOOL WINAPI DllMain(HINSTANCE own, DWORD reason, void*) {
    constexpr DWORD kPin = GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS;
    HMODULE pinned = nullptr;
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    return GetModuleHandleExW(kPin, reinterpret_cast<LPCWSTR>(own), &pinned);
}
