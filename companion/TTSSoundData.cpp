// SPDX-License-Identifier: MIT
#include "companion/TTSSoundData.h"

#include <limits>

#include "com/Boundary.h"
#include "com/OutPointer.h"

namespace larynth {

namespace {
constexpr int kSigned16Mono = 2;  // 16-bit signed, native byte order, one channel
}

HRESULT TTSSoundData::SetFormat(int nFormat) noexcept {
    if (nFormat != kSigned16Mono) return E_FAIL;
    format_ = nFormat;
    return S_OK;
}

HRESULT TTSSoundData::GetFormat(int* pnFormat) noexcept { return Put(pnFormat, format_); }

HRESULT TTSSoundData::GetSamples(const short** ppSamples, int* pnCount) noexcept {
    if (!CanWrite(ppSamples) || !CanWrite(pnCount)) return E_POINTER;
    *ppSamples = samples_.data();
    *pnCount = static_cast<int>(samples_.size());
    return S_OK;
}

HRESULT TTSSoundData::AppendSamples(int nFormat, short* pSamples, int nCount) noexcept {
    if (nFormat != kSigned16Mono || nCount < 0 || nCount > Room()) return E_FAIL;
    const auto count = static_cast<std::size_t>(nCount);
    if (IsBadReadPtr(pSamples, count * sizeof(short)) != FALSE) return E_POINTER;
    return Guarded([&] {
        samples_.insert(samples_.end(), pSamples, pSamples + count);
        return S_OK;
    });
}

HRESULT TTSSoundData::Reserve(int nCount) noexcept {
    if (nCount < 0 || nCount > Room()) return E_FAIL;
    return Guarded([&] {
        samples_.reserve(samples_.size() + static_cast<std::size_t>(nCount));
        return S_OK;
    });
}

int TTSSoundData::Room() const noexcept {
    return std::numeric_limits<int>::max() - static_cast<int>(samples_.size());
}

}  // namespace larynth
