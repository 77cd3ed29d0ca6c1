// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Synthesizer.h>

#include "com/ComObject.h"
#include "synth/CurrentVoice.h"
#include "synth/OutputStage.h"
#include "synth/PacketRenderer.h"
#include "synth/Roles.h"

namespace larynth {

/// The synthesizer object: what clients call, and the parts that do the work.
class Larynth final
    : public ComObject<ILarynthAttributes, IACLIOProcess, ILarynthStruct, ILarynthState, ILarynthSignals> {
  public:
    using ComObject::ComObject;

    HRESULT LARYNTH_CALL SetStructure(IUnknown* pIStructure, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL ResetToDefaults() noexcept override;
    HRESULT LARYNTH_CALL SetVolume(double dValue) noexcept override;
    HRESULT LARYNTH_CALL GetVolume(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL SetOutputGain(double dValue) noexcept override;
    HRESULT LARYNTH_CALL GetOutputGain(double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL SetVoice(IUnknown* pIVoice, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL GetVoice(REFIID riid, IUnknown** ppIVoice) noexcept override;
    HRESULT LARYNTH_CALL SetPacketSyncPointState(LONG bOnOff) noexcept override;

    HRESULT LARYNTH_CALL Initialize(IUnknown* pParam, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL Uninitialize() noexcept override;
    HRESULT LARYNTH_CALL Reset() noexcept override;
    HRESULT LARYNTH_CALL Calculate(IUnknown* pInput, REFIID IdIn, REFIID IdOut,
                                   IUnknown** ppOutput) noexcept override;

    HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pIVoicingSource, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL SetVocalTract(IUnknown* pIVocalTract, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL SetParallelTract(IUnknown* pIParallelTract, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL SetAspirationSource(IUnknown* pIAspirationSource, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL SetFricationSource(IUnknown* pIFricationSource, REFIID riid) noexcept override;
    HRESULT LARYNTH_CALL AddComponent(IUnknown* pIComponent, REFIID riid, LONG* pnID) noexcept override;
    HRESULT LARYNTH_CALL RemoveComponent(LONG nID) noexcept override;
    HRESULT LARYNTH_CALL GetComponent(LONG nID, REFIID riid, IUnknown** ppIComponent) noexcept override;

    HRESULT LARYNTH_CALL CreateState(IUnknown** ppState) noexcept override;
    HRESULT LARYNTH_CALL SaveState(IUnknown* pState) noexcept override;
    HRESULT LARYNTH_CALL RestoreState(IUnknown* pState) noexcept override;

    HRESULT LARYNTH_CALL GetSignalsCount(int* pnCount) noexcept override;
    HRESULT LARYNTH_CALL GetSignalName(int nIndex, LPSTR pcBuffer, int nLen) noexcept override;
    HRESULT LARYNTH_CALL CalculateSignals(IUnknown* pInput, double* pdValues, int nRowLength,
                                          IUnknown** ppOutput) noexcept override;

  private:
    /// Renders whatever kind of input it is and writes the output; raises the failures.
    HRESULT CalculateFrom(IUnknown* input, REFIID idOut, IUnknown** ppOutput);
    HRESULT CalculatePacket(ILarynthParams* packet, REFIID idOut, IUnknown** ppOutput);

    /// Calls `action` with the state object behind `object` and the elements of this synthesizer.
    HRESULT WithState(IUnknown* object, auto&& action) noexcept;

    /// What a packet's sample block carries.
    IUnknown* AttachedFor(ILarynthParams* packet) const noexcept {
        return packetSyncPoints_ ? packet : nullptr;
    }

    Roles roles_;
    OutputStage output_;
    CurrentVoice voice_{roles_, output_};
    PacketRenderer packets_{roles_, output_, voice_};
    bool initialized_ = false;
    bool packetSyncPoints_ = false;
};

}  // namespace larynth
