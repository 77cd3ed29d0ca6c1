// SPDX-License-Identifier: MIT
#include "runtime/RegistryView.h"

#include <algorithm>
#include <initializer_list>

#include "runtime/LastError.h"
#include "runtime/StoreFile.h"

namespace larynth {

namespace {

constinit thread_local ILarynthRegistry* substitute = nullptr;

void CheckPointers(std::initializer_list<const void*> pointers) {
    if (std::ranges::count(pointers, nullptr) != 0) throw Failure(E_POINTER, "null pointer");
}

}  // namespace

HRESULT RegistryView::QueryInterface(REFIID riid, void** ppv) noexcept {
    if (ppv == nullptr) return E_POINTER;
    const bool known = riid == IID_IUnknown || riid == IID_ILarynthRegistry;
    *ppv = known ? static_cast<ILarynthRegistry*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG RegistryView::Release() noexcept {
    const ULONG left = --count_;
    if (left == 0) delete this;
    return left;
}

HRESULT RegistryView::Begin() noexcept {
    return Contained([&] { return store_.Begin(), S_OK; });
}

HRESULT RegistryView::Commit() noexcept {
    return Contained([&] { return store_.Commit(), S_OK; });
}

HRESULT RegistryView::Rollback() noexcept {
    return Contained([&] { return store_.Rollback(), S_OK; });
}

HRESULT RegistryView::CreateKey(LPCSTR sKey) noexcept {
    return Contained([&] {
        CheckPointers({sKey});
        store_.CreateKey(sKey);
        return S_OK;
    });
}

HRESULT RegistryView::DeleteKey(LPCSTR sKey) noexcept {
    return Contained([&] {
        CheckPointers({sKey});
        return store_.DeleteKey(sKey) ? S_OK : S_FALSE;
    });
}

HRESULT RegistryView::SetValue(LPCSTR sKey, LPCSTR sName, LPCSTR sValue) noexcept {
    return Contained([&] {
        CheckPointers({sKey, sName, sValue});
        store_.SetValue(sKey, sName, sValue);
        return S_OK;
    });
}

HRESULT RegistryView::GetValue(LPCSTR sKey, LPCSTR sName, LPCSTR* psValue) noexcept {
    return Contained([&] {
        CheckPointers({sKey, sName, psValue});
        return Give(store_.Value(sKey, sName), psValue);
    });
}

HRESULT RegistryView::GetCounts(LPCSTR sKey, int* pnSubkeys, int* pnValues) noexcept {
    return Contained([&] {
        CheckPointers({sKey, pnSubkeys, pnValues});
        const auto counts = store_.Count(sKey);
        if (!counts) return REGDB_E_KEYMISSING;
        *pnSubkeys = counts->subkeys;
        *pnValues = counts->values;
        return S_OK;
    });
}

HRESULT RegistryView::GetSubkey(LPCSTR sKey, int nIndex, LPCSTR* psName) noexcept {
    return Contained([&] {
        CheckPointers({sKey, psName});
        return Give(store_.Subkey(sKey, nIndex), psName);
    });
}

/// Keeps the text for the caller.
HRESULT RegistryView::Give(std::optional<std::string> text, LPCSTR* out) {
    if (!text) return REGDB_E_KEYMISSING;
    text_ = std::move(*text);
    *out = text_.c_str();
    return S_OK;
}

RegistrySubstitution::RegistrySubstitution(ILarynthRegistry* registry) noexcept
    : previous_(std::exchange(substitute, registry)) {}

RegistrySubstitution::~RegistrySubstitution() { substitute = previous_; }

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthOpenRegistry(ILarynthRegistry** ppRegistry) {
    if (ppRegistry == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppRegistry = nullptr;
    return larynth::Contained([&] {
        ILarynthRegistry* const instead = larynth::substitute;
        if (instead != nullptr) instead->AddRef();
        *ppRegistry = instead != nullptr ? instead : new larynth::RegistryView(larynth::StoreFile());
        return S_OK;
    });
}
