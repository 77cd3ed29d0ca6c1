// SPDX-License-Identifier: MIT
#include "companion/ItemList.h"

#include <limits>
#include <utility>

#include "com/Boundary.h"
#include "companion/References.h"

namespace larynth {

HRESULT ItemList::Clear() noexcept {
    if (locks_ != 0) return E_FAIL;
    const auto dropped = std::exchange(items_, {});
    return S_OK;
}

HRESULT ItemList::Add(IUnknown* pItem) noexcept { return InsertAt(Count(), pItem); }

HRESULT ItemList::Insert(int nIndex, IUnknown* pItem) noexcept { return InsertAt(nIndex, pItem); }

HRESULT ItemList::InsertAt(int index, IUnknown* item) noexcept {
    if (item == nullptr) return E_POINTER;
    if (locks_ != 0 || index < 0 || index > Count() || Count() == std::numeric_limits<int>::max())
        return E_FAIL;
    return Guarded([&] {
        items_.insert(items_.begin() + index, Hold(item));
        return S_OK;
    });
}

HRESULT ItemList::Remove(int nIndex) noexcept {
    if (locks_ != 0 || !HasItem(nIndex)) return E_FAIL;
    const auto position = items_.begin() + nIndex;
    const auto dropped = std::move(*position);
    items_.erase(position);
    return S_OK;
}

HRESULT ItemList::GetCount(int* pnCount) noexcept { return Put(pnCount, Count()); }

HRESULT ItemList::GetItem(int nIndex, REFIID riid, IUnknown** ppItem) noexcept {
    if (!CanWrite(ppItem)) return E_POINTER;
    *ppItem = nullptr;
    if (!HasItem(nIndex)) return E_FAIL;
    return HandOut(items_[static_cast<std::size_t>(nIndex)], riid, ppItem);
}

HRESULT ItemList::SetItem(int nIndex, IUnknown* pItem) noexcept {
    if (pItem == nullptr) return E_POINTER;
    if (locks_ != 0 || !HasItem(nIndex)) return E_FAIL;
    const auto dropped = std::exchange(items_[static_cast<std::size_t>(nIndex)], Hold(pItem));
    return S_OK;
}

HRESULT ItemList::Lock() noexcept {
    ++locks_;
    return S_OK;
}

HRESULT ItemList::Unlock() noexcept {
    if (locks_ == 0) return E_FAIL;
    --locks_;
    return S_OK;
}

}  // namespace larynth
