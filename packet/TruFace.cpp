// SPDX-License-Identifier: MIT
#include "packet/TruFace.h"

#include <algorithm>

namespace larynth {

HRESULT TruFace::SetTruPacket(unsigned short* pnPacket, LONG bConvert) noexcept {
    TruWords& words = Data().truWords.emplace();
    std::copy_n(pnPacket, words.size(), words.begin());
    if (bConvert != 0) static_cast<void>(ConvertFromTru());
    return S_OK;
}

HRESULT TruFace::GetTruPacket(unsigned short* pnPacket, LONG bConvert) noexcept {
    if (bConvert != 0) static_cast<void>(ConvertToTru());
    const std::optional<TruWords>& words = Data().truWords;
    if (!words) return E_FAIL;
    if (!CanWriteBytes(pnPacket, sizeof(TruWords))) return E_POINTER;
    std::copy(words->begin(), words->end(), pnPacket);
    return S_OK;
}

HRESULT TruFace::ConvertFromTru() noexcept {
    const std::optional<TruWords>& words = Data().truWords;
    if (!words) return E_FAIL;
    ConvertTruWords(*words, Data());
    return S_OK;
}

}  // namespace larynth
