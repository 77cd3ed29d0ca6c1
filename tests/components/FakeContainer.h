// SPDX-License-Identifier: MIT
/// A container's side of the property protocol: sink, source and value holder.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <larynth/Properties.h>

#include "components/PropertyIndex.h"
#include "tests/support/StackObject.h"

namespace larynth {

/// Notes each announcement and fetches every element while it lasts.
class FakeSink final : public StackObject<IACLPropertySink> {
  public:
    struct Announcement {
        IACLPersistProperties* owner;
        std::string name;
        const void* value;
        LONG type;
        std::vector<LONG> reserved;
        int dimensions, size;
        std::vector<double> elements;
    };
    std::vector<Announcement> announcements;
    HRESULT result = S_OK;

    HRESULT LARYNTH_CALL AddProperty(IACLPersistProperties* pOwner, LPCSTR sName, const void* pValue,
                                     LONG nType, LONG n5, LONG n6, LONG n7,
                                     IUnknown* pIndex) noexcept override;
};

/// Keeps the last value and its type.
class FakeHolder final : public StackObject<IACLValueHolder> {
  public:
    double value = 0.0;
    LONG type = 0;
    int calls = 0;
    HRESULT result = S_OK;

    HRESULT LARYNTH_CALL Reserved3() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetValue(const void* pValue, LONG nType) noexcept override {
        value = *static_cast<const double*>(pValue);
        type = nType;
        ++calls;
        return result;
    }
};

/// An index object of one dimension.
class FakeIndex final : public StackObject<IACLPropertyIndex> {
  public:
    FakeIndex(int current, int size) : current_(current), size_(size) {}

    /// What every getter returns.
    HRESULT result = S_OK;

    HRESULT LARYNTH_CALL SetDimensionCount(int) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetDimensionCount(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetSize(int, int) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetIndex(int, int) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetName(int, LPCSTR) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetSize(int d, int* pn) noexcept override { return Give(d, size_, pn); }
    HRESULT LARYNTH_CALL GetIndex(int d, int* pn) noexcept override { return Give(d, current_, pn); }
    HRESULT LARYNTH_CALL GetNameLength(int, int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetName(int, LPSTR) noexcept override { return E_NOTIMPL; }

  private:
    HRESULT Give(int dimension, int value, int* target) const {
        if (dimension != 0) return E_NOTIMPL;
        if (SUCCEEDED(result)) *target = value;
        return result;
    }

    int current_, size_;
};

/// Pushes a waveform.
class FakeSource final : public StackObject<IACLPropertySource> {
  public:
    explicit FakeSource(std::vector<double> pushed) : wave(std::move(pushed)) {}

    std::vector<double> wave;
    HRESULT result = S_OK;

    HRESULT LARYNTH_CALL PushProperties(IACLPersistProperties* pTarget) noexcept override {
        for (std::size_t i = 0; i < wave.size(); ++i) {
            FakeIndex index(static_cast<int>(i), static_cast<int>(wave.size()));
            const HRESULT hr = pTarget->SetPropertyValue(nullptr, "Wave", 0, &wave[i], 6, 0, 0, &index);
            if (FAILED(hr)) return hr;
        }
        return result;
    }
};

inline HRESULT LARYNTH_CALL FakeSink::AddProperty(IACLPersistProperties* pOwner, LPCSTR sName,
                                                  const void* pValue, LONG nType, LONG n5, LONG n6, LONG n7,
                                                  IUnknown* pIndex) noexcept {
    Announcement announcement{pOwner, sName, pValue, nType, {n5, n6, n7}, 0, 0, {}};
    auto* index = static_cast<IACLPropertyIndex*>(pIndex);
    index->GetDimensionCount(&announcement.dimensions);
    index->GetSize(0, &announcement.size);
    for (int i = 0; i < announcement.size; ++i) {
        FakeHolder holder;
        index->SetIndex(0, i);
        pOwner->GetPropertyValue(&holder, sName, 0, index);
        announcement.elements.push_back(holder.value);
    }
    announcements.push_back(std::move(announcement));
    return result;
}

}  // namespace larynth
