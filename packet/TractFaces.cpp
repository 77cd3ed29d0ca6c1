// SPDX-License-Identifier: MIT
#include "packet/TractFaces.h"

#include "com/Create.h"
#include "packet/ResonatorParams.h"

namespace larynth {

namespace {

/// Writes a new view of entry `nIndex` as `riid`. Whatever keeps the view from being made gives E_FAIL. A
/// view that does not answer `riid` is destroyed, and with it its reference on the packet.
template <class View>
HRESULT HandOut(std::span<ResonatorEntry> entries, int nIndex, IUnknown& packet, IUnknown** ppRes,
                REFIID riid) noexcept {
    return Guarded([&]() -> HRESULT {
        if (!CanWrite(ppRes)) return E_POINTER;
        if (nIndex < 0 || nIndex >= static_cast<int>(entries.size())) return E_FAIL;
        const Created<View> view = MakeObject<View>();
        view->Bind(entries[static_cast<std::size_t>(nIndex)], packet);
        return view->Inner().QueryInterface(riid, reinterpret_cast<void**>(ppRes));
    });
}

}  // namespace

HRESULT CascadeFace::GetResonatorsCount(int* pnCount) noexcept { return Put(pnCount, kCascadePoles.count); }

HRESULT CascadeFace::GetAntiResonatorsCount(int* pnCount) noexcept {
    return Put(pnCount, kCascadeZeros.count);
}

HRESULT CascadeFace::GetResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept {
    return HandOut<TTSResonatorParams>(Data().Entries(kCascadePoles), nIndex, *this, ppRes, riid);
}

HRESULT CascadeFace::GetAntiResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept {
    return HandOut<TTSAntiResonatorParams>(Data().Entries(kCascadeZeros), nIndex, *this, ppRes, riid);
}

HRESULT CascadeFace::IsResDataValid(LONG* pbValid) noexcept {
    return Put(pbValid, Data().validity & KlattPacketData::kResonatorDataValid);
}

HRESULT ParallelFace::GetResonatorsCount(int* pnCount) noexcept { return Put(pnCount, kParallelPoles.count); }

HRESULT ParallelFace::GetResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept {
    return HandOut<TTSResonatorParams>(Data().Entries(kParallelPoles), nIndex, *this, ppRes, riid);
}

}  // namespace larynth
