// SPDX-License-Identifier: MIT
#include "runtime/store/RegistryView.h"

#include <algorithm>
#include <initializer_list>

#include "com/OutPointer.h"
#include "runtime/Failure.h"
#include "runtime/store/StoreFile.h"

namespace larynth {

namespace {

constinit thread_local ILarynthRegistry* substitute = nullptr;

void CheckTexts(std::initializer_list<LPCSTR> texts) {
    if (std::ranges::count(texts, nullptr) != 0) throw Failure(E_POINTER, "null pointer");
}

template <class T>
void CheckOut(T* out) {
    if (!CanWrite(out)) throw Failure(E_POINTER, "an out-pointer that cannot be written");
}

}  // namespace

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
        CheckTexts({sKey});
        store_.CreateKey(sKey);
        return S_OK;
    });
}

HRESULT RegistryView::DeleteKey(LPCSTR sKey) noexcept {
    return Contained([&] {
        CheckTexts({sKey});
        return store_.DeleteKey(sKey) ? S_OK : S_FALSE;
    });
}

HRESULT RegistryView::SetValue(LPCSTR sKey, LPCSTR sName, LPCSTR sValue) noexcept {
    return Contained([&] {
        CheckTexts({sKey, sName, sValue});
        store_.SetValue(sKey, sName, sValue);
        return S_OK;
    });
}

HRESULT RegistryView::GetValue(LPCSTR sKey, LPCSTR sName, LPCSTR* psValue) noexcept {
    return Contained([&] {
        CheckTexts({sKey, sName});
        CheckOut(psValue);
        return Give(store_.Value(sKey, sName), psValue);
    });
}

HRESULT RegistryView::GetCounts(LPCSTR sKey, int* pnSubkeys, int* pnValues) noexcept {
    return Contained([&] {
        CheckTexts({sKey});
        CheckOut(pnSubkeys);
        CheckOut(pnValues);
        const auto counts = store_.Count(sKey);
        if (!counts) return REGDB_E_KEYMISSING;
        *pnSubkeys = counts->subkeys;
        *pnValues = counts->values;
        return S_OK;
    });
}

HRESULT RegistryView::GetSubkey(LPCSTR sKey, int nIndex, LPCSTR* psName) noexcept {
    return Contained([&] {
        CheckTexts({sKey});
        CheckOut(psName);
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

bool RegistrySubstitution::InForce() noexcept { return substitute != nullptr; }

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthOpenSystemRegistry(ILarynthRegistry** ppRegistry) {
    if (ppRegistry == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppRegistry = nullptr;
    return larynth::Contained([&] {
        *ppRegistry = new larynth::RegistryView(larynth::SystemStoreFile());
        return S_OK;
    });
}

HRESULT LARYNTH_CALL LarynthOpenRegistry(ILarynthRegistry** ppRegistry) {
    if (ppRegistry == nullptr) return larynth::Fail(E_POINTER, "null out-pointer");
    *ppRegistry = nullptr;
    return larynth::Contained([&] {
        ILarynthRegistry* const instead = larynth::substitute;
        if (instead != nullptr) instead->AddRef();
        *ppRegistry = instead != nullptr ? instead : new larynth::RegistryView(larynth::UsersStoreFile());
        return S_OK;
    });
}
