// SPDX-License-Identifier: MIT
#include "synth/Larynth.h"

#include <larynth/Classes.h>

#include "com/Boundary.h"
#include "com/Create.h"
#include "com/OutPointer.h"
#include "com/OwnObject.h"
#include "packet/LarynthParams.h"
#include "synth/SignalTaps.h"
#include "synth/StreamRenderer.h"
#include "synth/SynthesizerState.h"

namespace larynth {

namespace {

/// The fixed numbers of the roles.
enum RoleId : LONG {
    kVoicingSource = 1,
    kAspirationSource = 2,
    kFricationSource = 3,
    kVocalTract = 4,
    kParallelTract = 5,
    kVoicingFilter = 6
};

}  // namespace

HRESULT Larynth::SetStructure(IUnknown*, REFIID) noexcept { return S_OK; }

HRESULT Larynth::ResetToDefaults() noexcept { return S_OK; }

HRESULT Larynth::SetVolume(double dValue) noexcept {
    output_.volume = dValue;
    return S_OK;
}

HRESULT Larynth::GetVolume(double* pdValue) noexcept { return Put(pdValue, output_.volume); }

HRESULT Larynth::SetOutputGain(double dValue) noexcept {
    output_.outputGain = dValue;
    return S_OK;
}

HRESULT Larynth::GetOutputGain(double* pdValue) noexcept { return Put(pdValue, output_.outputGain); }

HRESULT Larynth::SetVoice(IUnknown* pIVoice, REFIID) noexcept {
    return GuardedAlive([&] { return voice_.Set(pIVoice); });
}

HRESULT Larynth::GetVoice(REFIID riid, IUnknown** ppIVoice) noexcept {
    if (const HRESULT hr = Put(ppIVoice, nullptr); FAILED(hr)) return hr;
    return GuardedAlive([&]() -> HRESULT {
        const ComPtr<ITTSVoice> voice = voice_.Get();
        return voice ? voice->QueryInterface(riid, reinterpret_cast<void**>(ppIVoice)) : S_FALSE;
    });
}

HRESULT Larynth::SetPacketSyncPointState(LONG bOnOff) noexcept {
    packetSyncPoints_ = bOnOff != 0;
    return S_OK;
}

HRESULT Larynth::Initialize(IUnknown*, REFIID) noexcept {
    return GuardedAlive([&] {
        Zelvani::CheckResult(roles_.FillEmpty());
        initialized_ = true;
        return S_OK;
    });
}

HRESULT Larynth::Uninitialize() noexcept {
    initialized_ = false;
    return S_OK;
}

HRESULT Larynth::Reset() noexcept { return S_OK; }

HRESULT Larynth::Calculate(IUnknown* pInput, REFIID, REFIID IdOut, IUnknown** ppOutput) noexcept {
    if (!initialized_) return E_FAIL;
    if (pInput == nullptr || FAILED(Put(ppOutput, nullptr))) return E_POINTER;
    return GuardedAlive([&] { return CalculateFrom(pInput, IdOut, ppOutput); });
}

HRESULT Larynth::CalculateFrom(IUnknown* input, REFIID idOut, IUnknown** ppOutput) {
    // A packet of ours is neither holder nor list, and need not be asked.
    auto packet = ComPtr<ILarynthParams>::Share(OwnObject<LarynthParams>::Find(input));
    if (packet) return CalculatePacket(packet.Get(), idOut, ppOutput);
    ComPtr<ITTSSyncHolder> holder;
    ComPtr<ITTSObjectList> list;
    if (!holder.TryQuery(input) && !list.TryQuery(input)) {
        packet.Query(input);
        if (!packet) return E_FAIL;
        return CalculatePacket(packet.Get(), idOut, ppOutput);
    }
    ComPtr<ITTSObjectList> output;
    Zelvani::CheckResult(output.Create(CLSID_TTSObjectList));
    StreamRenderer stream(packets_, voice_, packetSyncPoints_, *output.Get());
    if (holder) {
        stream.RenderHolder(holder.Get());
    } else {
        stream.RenderList(list.Get());
    }
    return output->QueryInterface(idOut, reinterpret_cast<void**>(ppOutput));
}

HRESULT Larynth::CalculatePacket(ILarynthParams* packet, REFIID idOut, IUnknown** ppOutput) {
    if (!(idOut == GUID_NULL || idOut == IID_ITTSSoundData)) return E_FAIL;
    *ppOutput = packets_.Render(packet, AttachedFor(packet)).Detach();
    return S_OK;
}

HRESULT Larynth::SetVoicingSource(IUnknown* pIVoicingSource, REFIID) noexcept {
    return GuardedAlive([&] {
        roles_.PlugVoicingSource(pIVoicingSource);
        return S_OK;
    });
}

HRESULT Larynth::SetVocalTract(IUnknown* pIVocalTract, REFIID) noexcept {
    return GuardedAlive([&] { return roles_.Plug(roles_.vocalTract, pIVocalTract); });
}

HRESULT Larynth::SetParallelTract(IUnknown* pIParallelTract, REFIID) noexcept {
    return GuardedAlive([&] { return roles_.Plug(roles_.parallelTract, pIParallelTract); });
}

HRESULT Larynth::SetAspirationSource(IUnknown* pIAspirationSource, REFIID) noexcept {
    return GuardedAlive([&] { return roles_.Plug(roles_.aspirationSource, pIAspirationSource); });
}

HRESULT Larynth::SetFricationSource(IUnknown* pIFricationSource, REFIID) noexcept {
    return GuardedAlive([&] { return roles_.Plug(roles_.fricationSource, pIFricationSource); });
}

HRESULT Larynth::AddComponent(IUnknown* pIComponent, REFIID riid, LONG* pnID) noexcept {
    if (!CanWrite(pnID)) return E_POINTER;
    const auto added = [pnID](RoleId role, HRESULT hr) {
        *pnID = role;
        return hr;
    };
    if (riid == IID_ITTSVoicingSource) return added(kVoicingSource, SetVoicingSource(pIComponent, riid));
    if (riid == IID_ITTSAspirationSource)
        return added(kAspirationSource, SetAspirationSource(pIComponent, riid));
    if (riid == IID_ITTSFricationSource)
        return added(kFricationSource, SetFricationSource(pIComponent, riid));
    if (riid == IID_ITTSVocalTract) return added(kVocalTract, SetVocalTract(pIComponent, riid));
    if (riid == IID_ITTSParallelTract) return added(kParallelTract, SetParallelTract(pIComponent, riid));
    if (riid == IID_ITTSVoicingSourceFilter) {
        return added(kVoicingFilter,
                     GuardedAlive([&] { return roles_.Plug(roles_.voicingFilter, pIComponent); }));
    }
    return S_OK;
}

HRESULT Larynth::RemoveComponent(LONG nID) noexcept {
    return GuardedAlive([&] {
        if (nID == kVoicingFilter) roles_.RemoveVoicingFilter();
        return S_OK;
    });
}

HRESULT Larynth::GetComponent(LONG nID, REFIID riid, IUnknown** ppIComponent) noexcept {
    if (!CanWrite(ppIComponent)) return E_POINTER;
    if (nID != kVoicingFilter || !roles_.voicingFilter) return E_FAIL;
    return GuardedAlive([&] {
        const auto filter = roles_.voicingFilter;
        return filter->QueryInterface(riid, reinterpret_cast<void**>(ppIComponent));
    });
}

HRESULT Larynth::CreateState(IUnknown** ppState) noexcept {
    if (const HRESULT hr = Put(ppState, nullptr); FAILED(hr)) return hr;
    return CreateInstance<SynthesizerState>(nullptr, IID_IUnknown, reinterpret_cast<void**>(ppState));
}

HRESULT Larynth::SaveState(IUnknown* pState) noexcept {
    return WithState(
        pState, [this](SynthesizerState& state, const Network::Elements& own) { state.Save(own, output_); });
}

HRESULT Larynth::RestoreState(IUnknown* pState) noexcept {
    return WithState(pState, [this](const SynthesizerState& state, const Network::Elements& own) {
        state.Restore(own, output_);
    });
}

HRESULT Larynth::WithState(IUnknown* object, auto&& action) noexcept {
    if (!CanCall(object)) return E_POINTER;
    return Guarded([&]() -> HRESULT {
        SynthesizerState* const state = OwnObject<SynthesizerState>::Find(object);
        if (state == nullptr) return E_INVALIDARG;
        const auto own = roles_.OwnElements();
        if (!own) return E_NOTIMPL;
        action(*state, *own);
        return S_OK;
    });
}

HRESULT Larynth::GetSignalsCount(int* pnCount) noexcept {
    return Put(pnCount, static_cast<int>(SignalNames().size()));
}

HRESULT Larynth::GetSignalName(int nIndex, LPSTR pcBuffer, int nLen) noexcept {
    if (!CanFill(pcBuffer, nLen)) return E_POINTER;
    if (nIndex < 0 || nIndex >= static_cast<int>(SignalNames().size())) return E_FAIL;
    return PutText(pcBuffer, nLen, SignalNames()[static_cast<std::size_t>(nIndex)]);
}

HRESULT Larynth::CalculateSignals(IUnknown* pInput, double* pdValues, int nRowLength,
                                  IUnknown** ppOutput) noexcept {
    if (!initialized_) return E_FAIL;
    if (pInput == nullptr || FAILED(Put(ppOutput, nullptr))) return E_POINTER;
    return GuardedAlive([&]() -> HRESULT {
        ComPtr<ILarynthParams> packet;
        packet.Query(pInput);
        if (!packet) return E_FAIL;
        const SignalRows rows{pdValues, nRowLength};
        *ppOutput = packets_.Render(packet.Get(), AttachedFor(packet.Get()), &rows).Detach();
        return S_OK;
    });
}

}  // namespace larynth
