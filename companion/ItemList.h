// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Streams.h>

namespace larynth {

/// An ordered list of references: the face that object lists and stream holders share.
///
/// An item that is dropped is released when the list is already in its new state, because the release may
/// destroy the item and call back.
class ItemList : public ITTSObjectList {
  public:
    using Interface = ITTSObjectList;

    HRESULT LARYNTH_CALL Clear() noexcept override;
    HRESULT LARYNTH_CALL Add(IUnknown* pItem) noexcept override;
    HRESULT LARYNTH_CALL Insert(int nIndex, IUnknown* pItem) noexcept override;
    HRESULT LARYNTH_CALL Remove(int nIndex) noexcept override;
    HRESULT LARYNTH_CALL GetCount(int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL GetItem(int nIndex, REFIID riid, IUnknown** ppItem) noexcept override;
    HRESULT LARYNTH_CALL SetItem(int nIndex, IUnknown* pItem) noexcept override;
    HRESULT LARYNTH_CALL Lock() noexcept override;
    HRESULT LARYNTH_CALL Unlock() noexcept override;

  protected:
    ItemList() = default;
    ~ItemList() = default;

  private:
    int Count() const noexcept { return static_cast<int>(items_.size()); }
    bool HasItem(int index) const noexcept { return index >= 0 && index < Count(); }
    HRESULT InsertAt(int index, IUnknown* item) noexcept;

    std::vector<ComPtr<IUnknown>> items_;
    int locks_ = 0;  ///< Unmatched calls of Lock.
};

}  // namespace larynth
