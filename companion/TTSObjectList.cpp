// SPDX-License-Identifier: MIT
#include "companion/TTSObjectList.h"

#include <limits>
#include <utility>

#include "com/Boundary.h"

namespace larynth {

HRESULT ObjectListFace::Clear() noexcept {
    if (locks_ != 0) return E_FAIL;
    const auto dropped = std::exchange(objects_, {});
    return S_OK;
}

HRESULT ObjectListFace::Add(IUnknown* pItem) noexcept { return InsertAt(Count(), pItem); }

HRESULT ObjectListFace::Insert(int nIndex, IUnknown* pItem) noexcept { return InsertAt(nIndex, pItem); }

HRESULT ObjectListFace::InsertAt(int index, IUnknown* object) noexcept {
    if (object == nullptr) return E_POINTER;
    const auto self = ComPtr<ITTSObjectList>::Share(this);
    auto held = ComPtr<IUnknown>::Share(object);  // first, as this may call back, or give the list back
    if (locks_ != 0 || index < 0 || index > Count() || Count() == std::numeric_limits<int>::max())
        return E_FAIL;
    return Guarded([&] {
        objects_.insert(objects_.begin() + index, std::move(held));
        return S_OK;
    });
}

HRESULT ObjectListFace::Remove(int nIndex) noexcept {
    if (locks_ != 0 || !Has(nIndex)) return E_FAIL;
    const auto position = objects_.begin() + nIndex;
    const auto dropped = std::move(*position);
    objects_.erase(position);
    return S_OK;
}

HRESULT ObjectListFace::GetCount(int* pnCount) noexcept { return Put(pnCount, Count()); }

HRESULT ObjectListFace::GetItem(int nIndex, REFIID riid, IUnknown** ppItem) noexcept {
    if (!CanWrite(ppItem)) return E_POINTER;
    *ppItem = nullptr;
    if (!Has(nIndex)) return E_FAIL;
    return HandOut(objects_[static_cast<std::size_t>(nIndex)], riid, ppItem);
}

HRESULT ObjectListFace::SetItem(int nIndex, IUnknown* pItem) noexcept {
    if (pItem == nullptr) return E_POINTER;
    const auto self = ComPtr<ITTSObjectList>::Share(this);
    auto held = ComPtr<IUnknown>::Share(pItem);
    if (locks_ != 0 || !Has(nIndex)) return E_FAIL;
    const auto dropped = std::exchange(objects_[static_cast<std::size_t>(nIndex)], std::move(held));
    return S_OK;
}

HRESULT ObjectListFace::Lock() noexcept {
    ++locks_;
    return S_OK;
}

HRESULT ObjectListFace::Unlock() noexcept {
    if (locks_ == 0) return E_FAIL;
    --locks_;
    return S_OK;
}

}  // namespace larynth
