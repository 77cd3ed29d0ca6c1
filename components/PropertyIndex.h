// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include <larynth/Properties.h>

namespace larynth {

/// The index object of one announcement: it lives in the announcing call's frame.
///
/// It stands outside the object kit, because nobody owns it: it is not counted, and no reference to it
/// outlives the call, however many are taken or given back.
class PropertyIndex final : public IACLPropertyIndex {
  public:
    static constexpr int kMostDimensions = 1 << 16;

    PropertyIndex() = default;
    PropertyIndex(const PropertyIndex&) = delete;
    PropertyIndex& operator=(const PropertyIndex&) = delete;
    virtual ~PropertyIndex() = default;

    /// E_FAIL, not E_NOINTERFACE, for any other interface.
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override;
    ULONG LARYNTH_CALL AddRef() noexcept override { return 1; }
    ULONG LARYNTH_CALL Release() noexcept override { return 1; }

    /// E_FAIL, with nothing changed, below 0 and above kMostDimensions.
    HRESULT LARYNTH_CALL SetDimensionCount(int nCount) noexcept override;
    HRESULT LARYNTH_CALL GetDimensionCount(int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL SetSize(int nDimension, int nSize) noexcept override;
    HRESULT LARYNTH_CALL SetIndex(int nDimension, int nIndex) noexcept override;
    HRESULT LARYNTH_CALL SetName(int nDimension, LPCSTR sName) noexcept override;
    HRESULT LARYNTH_CALL GetSize(int nDimension, int* pnSize) noexcept override;
    HRESULT LARYNTH_CALL GetIndex(int nDimension, int* pnIndex) noexcept override;
    HRESULT LARYNTH_CALL GetNameLength(int nDimension, int* pnLength) noexcept override;
    HRESULT LARYNTH_CALL GetName(int nDimension, LPSTR sBuffer) noexcept override;

  private:
    struct Dimension {
        int size = 0;
        int index = 0;
        std::string name = " , ";
    };

    Dimension* Find(int dimension) noexcept;
    HRESULT Store(int dimension, int Dimension::*field, int value) noexcept;
    HRESULT Read(int dimension, int Dimension::*field, int* target) noexcept;

    std::vector<Dimension> dimensions_;
};

}  // namespace larynth
