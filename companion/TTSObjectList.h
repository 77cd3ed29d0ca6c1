// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Streams.h>

#include "com/ComObject.h"
#include "companion/AttachedObject.h"

namespace larynth {

/// An ordered list of references: the face that object lists and stream holders share.
///
/// An object that is dropped is released when the list is already in its new state, because the release may
/// destroy the object and call back.
class ObjectListFace : public ITTSObjectList {
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
    ObjectListFace() = default;
    ~ObjectListFace() {
        for (auto& object : objects_) ReleaseInTurn(std::move(object));
    }

  private:
    int Count() const noexcept { return static_cast<int>(objects_.size()); }
    bool Has(int index) const noexcept { return index >= 0 && index < Count(); }
    HRESULT InsertAt(int index, IUnknown* object) noexcept;

    std::vector<ComPtr<IUnknown>> objects_;
    int locks_ = 0;  ///< Unmatched calls of Lock.
};

/// A list of objects: packets on their way in, sample blocks and markers on their way out. Starts empty.
class TTSObjectList final : public ComObject<ObjectListFace> {
  public:
    using ComObject::ComObject;
};

/// A marker in front of a list: the attached object, which may be a voice, and the content that follows it.
class TTSStreamHolder final : public ComObject<AttachedObject, ObjectListFace> {
  public:
    using ComObject::ComObject;
};

}  // namespace larynth
