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

/// What a module's registry scripts name are its classes.
BOOL CALLBACK OfferClassesOf(HMODULE module, LPCSTR type, LPSTR number, LONG_PTR getClassObject) {
    constexpr std::size_t kLength = 38;  // of an identifier with its braces
    const HRSRC script = FindResourceA(module, number, type);
    const HGLOBAL loaded = LoadResource(module, script);
    const std::string_view text(static_cast<const char*>(LockResource(loaded)),
                                SizeofResource(module, script));
    for (std::size_t at = 0; (at = text.find('{', at)) + kLength <= text.size(); ++at) {
        CLSID id;
        ComPtr<IUnknown> object;
        DWORD registered = 0;
        if (FAILED(CLSIDFromString(Wide(text.substr(at, kLength)).c_str(), &id))) continue;
        if (FAILED(reinterpret_cast<ClassObjectEntry>(getClassObject)(id, IID_IUnknown, object.PutVoid())))
            break;
        CoRegisterClassObject(id, object.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registered);
        break;
    }
    return TRUE;
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
        EnumResourceNamesA(module, "REGISTRY", larynth::OfferClassesOf, reinterpret_cast<LONG_PTR>(entry));
        return S_OK;
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
