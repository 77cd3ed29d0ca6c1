// SPDX-License-Identifier: MIT
#include "packet/TractFaces.h"

#include "com/Create.h"
#include "packet/ResonatorParams.h"

namespace larynth {

namespace {

/// Writes a new view of entry `nIndex` as `riid`. Whatever keeps the view from being made gives E_FAIL. A
/// view that does not answer `riid` is destroyed, and with it its reference on the packet.
template <class View>
HRESULT HandOut(KlattPacketData& data, const ResonatorGroup& group, int nIndex, IUnknown& packet,
                IUnknown** ppRes, REFIID riid) noexcept {
    return Guarded([&]() -> HRESULT {
        if (!CanWrite(ppRes)) return E_POINTER;
        if (nIndex < 0 || nIndex >= group.count) return E_FAIL;
        const Created<View> view = MakeObject<View>();
        view->Bind(ResonatorEntry(data, group, nIndex), packet);
        return view->Inner().QueryInterface(riid, reinterpret_cast<void**>(ppRes));
    });
}

}  // namespace

HRESULT CascadeFace::GetResonatorsCount(int* pnCount) noexcept { return Put(pnCount, kCascadePoles.count); }

HRESULT CascadeFace::GetAntiResonatorsCount(int* pnCount) noexcept {
    return Put(pnCount, kCascadeZeros.count);
}

HRESULT CascadeFace::GetResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept {
    return HandOut<TTSResonatorParams>(Data(), kCascadePoles, nIndex, *this, ppRes, riid);
}

HRESULT CascadeFace::GetAntiResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept {
    return HandOut<TTSAntiResonatorParams>(Data(), kCascadeZeros, nIndex, *this, ppRes, riid);
}

HRESULT CascadeFace::IsResDataValid(LONG* pbValid) noexcept {
    return Put(pbValid, Data().validity & KlattPacketData::kResonatorDataValid);
}

HRESULT ParallelFace::GetResonatorsCount(int* pnCount) noexcept { return Put(pnCount, kParallelPoles.count); }

HRESULT ParallelFace::GetResonator(int nIndex, IUnknown** ppRes, REFIID riid) noexcept {
    return HandOut<TTSResonatorParams>(Data(), kParallelPoles, nIndex, *this, ppRes, riid);
}

}  // namespace larynth
