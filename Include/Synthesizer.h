// SPDX-License-Identifier: MIT
/// The synthesizer. One object is used by one thread at a time; any number of objects may work at once.
#pragma once

#include <larynth/Interface.h>

/// Settings of a synthesizer. They hold from the next sample on.
struct LARYNTH_INTERFACE(ILarynthAttributes, "23961c52-2970-4819-ae6f-8f356f02bfb4") : IUnknown {
    /// No effect.
    virtual HRESULT LARYNTH_CALL SetStructure(IUnknown* pIStructure /*in*/, REFIID riid /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL ResetToDefaults() = 0;                ///< No effect.
    virtual HRESULT LARYNTH_CALL SetVolume(double dValue /*in*/) = 0;  ///< Linear, applied last; any value.
    virtual HRESULT LARYNTH_CALL GetVolume(double* pdValue /*out*/) = 0;
    /// Linear, on the sum of both tracts.
    virtual HRESULT LARYNTH_CALL SetOutputGain(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetOutputGain(double* pdValue /*out*/) = 0;
    /// Takes an object that answers ITTSVoice (else E_FAIL, nothing changed), with its source, pre-emphasis,
    /// open quotient and output filters; null removes the voice and brings back a standard source. E_FAIL
    /// when no source can be had. The voice is announced at the next holder in a stream.
    virtual HRESULT LARYNTH_CALL SetVoice(IUnknown* pIVoice /*in*/, REFIID riid /*in*/) = 0;
    /// None: S_FALSE, null.
    virtual HRESULT LARYNTH_CALL GetVoice(REFIID riid /*in*/, IUnknown** ppIVoice /*out*/) = 0;
    /// Non-zero: every sample block carries its packet as attached object.
    virtual HRESULT LARYNTH_CALL SetPacketSyncPointState(LONG bOnOff /*in*/) = 0;
};

/// Processing of input objects into output objects.
struct LARYNTH_INTERFACE(IACLIOProcess, "48018f5e-1863-41da-abca-5daa475d779c") : IUnknown {
    /// Fills every empty role with this system's own component; a failed creation's code. Arguments are not
    /// used.
    virtual HRESULT LARYNTH_CALL Initialize(IUnknown* pParam /*in*/, REFIID riid /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL Uninitialize() = 0;  ///< Calculate fails until the next Initialize.
    virtual HRESULT LARYNTH_CALL Reset() = 0;         ///< No effect: state runs on from frame to frame.
    /// Renders a packet into a block (`IdOut` null or ITTSSoundData), or a list or a holder into a list (as
    /// `IdOut`). The caller owns the output. E_FAIL when not initialized, with nothing written. On any other
    /// failure the output is null: E_FAIL for a packet while a mandatory role is empty, for a bad sample
    /// frequency, a negative frame length or another `IdOut`, and for holders nested more than 256 deep;
    /// E_POINTER for null input; E_NOINTERFACE for an input of no known kind; else the code of the call that
    /// failed.
    virtual HRESULT LARYNTH_CALL Calculate(IUnknown* pInput /*in*/, REFIID IdIn /*in*/, REFIID IdOut /*in*/,
                                           IUnknown** ppOutput /*out*/) = 0;
};

/// The components of a synthesizer. Setters release the old component before they query the new one: a failed
/// query leaves the role empty and returns its code. Each takes a reference of its own.
struct LARYNTH_INTERFACE(ILarynthStruct, "614d292e-1f1e-4bfa-a300-3324c470d28b") : IUnknown {
    /// Also hands the source to the voicing source filter, if there is one. E_POINTER for null.
    virtual HRESULT LARYNTH_CALL SetVoicingSource(IUnknown* pIVoicingSource /*in*/, REFIID riid /*in*/) = 0;
    /// E_FAIL: null.
    virtual HRESULT LARYNTH_CALL SetVocalTract(IUnknown* pIVocalTract /*in*/, REFIID riid /*in*/) = 0;
    /// E_FAIL: null.
    virtual HRESULT LARYNTH_CALL SetParallelTract(IUnknown* pIParallelTract /*in*/, REFIID riid /*in*/) = 0;
    /// E_FAIL: null.
    virtual HRESULT LARYNTH_CALL SetAspirationSource(IUnknown* pIAspirationSource /*in*/,
                                                     REFIID riid /*in*/) = 0;
    /// E_FAIL: null.
    virtual HRESULT LARYNTH_CALL SetFricationSource(IUnknown* pIFricationSource /*in*/,
                                                    REFIID riid /*in*/) = 0;
    /// Fills the role that `riid` names and writes its fixed number: voicing 1, aspiration 2, frication 3,
    /// cascade 4, parallel 5, voicing filter 6. An unknown `riid` does nothing: S_OK.
    virtual HRESULT LARYNTH_CALL AddComponent(IUnknown* pIComponent /*in*/, REFIID riid /*in*/,
                                              LONG* pnID /*out*/) = 0;
    /// 6 empties the voicing filter's role.
    virtual HRESULT LARYNTH_CALL RemoveComponent(LONG nID /*in*/) = 0;
    /// Role 6 as `riid`; E_FAIL for any other role or an empty one.
    virtual HRESULT LARYNTH_CALL GetComponent(LONG nID /*in*/, REFIID riid /*in*/,
                                              IUnknown** ppIComponent /*out*/) = 0;
};

/// What a synthesizer remembers from one packet to the next, to be kept and put back: the samples of the
/// packets that follow are then the same to the last bit. All components are this system's own, and stand
/// alone: else E_NOTIMPL, as for an empty role and for a voicing filter that moves another source than the
/// synthesizer's.
///
/// A state holds everything that decides later samples when the same packets follow: coefficients and states
/// of all sections, phases, the flutter's time, the wave table, gain, volume, pre-emphasis and output
/// filters, and the state of the noise generator. The voice stays the one that is set, and so does the
/// waveform of a wave-table source, from which the next table would be built.
struct LARYNTH_INTERFACE(ILarynthState, "9130173a-66bd-48a0-a1e2-4d8170d416eb") : IUnknown {
    /// A new, empty state, which the caller owns. It answers IUnknown alone and may outlive the synthesizer.
    /// E_OUTOFMEMORY, with null written.
    virtual HRESULT LARYNTH_CALL CreateState(IUnknown** ppState /*out*/) = 0;
    /// Replaces what `pState` holds. One that has held the state of such a synthesizer takes no new memory.
    /// E_POINTER; E_INVALIDARG when it is none of CreateState's; E_FAIL when memory runs out: then it is
    /// empty.
    virtual HRESULT LARYNTH_CALL SaveState(IUnknown* pState /*in*/) = 0;
    /// Puts `pState` back, here or in another synthesizer with the same kinds of components; any number of
    /// times. The process has one noise generator: it is set for every synthesizer of it, as LarynthSeedNoise
    /// does, and the bits are the same only as long as no other draws from it. With any failure nothing has
    /// changed: E_POINTER and E_INVALIDARG as above; E_FAIL for an empty state, for other kinds of
    /// components, and when memory runs out.
    virtual HRESULT LARYNTH_CALL RestoreState(IUnknown* pState /*in*/) = 0;
};

/// The signals inside a synthesizer, sample by sample, to be looked at. Each has a number, from 0 on, and a
/// name:
///
///   voicing                            the source, its F0 moved by flutter
///   tilted_voicing                     behind the voicing filter
///   aspiration, frication              noise
///   cascade_input                      tilted voicing and aspiration
///   cascade_nz, cascade_np,            nasal zero, nasal pole and formants of the cascade, in the order in
///   cascade_f1 … cascade_f5            which they are passed; NaN for a tract in filter form
///   parallel_bypass,                   what is added to the parallel branch
///   parallel_f0 … parallel_f6
///   cascade, parallel, sum             both branches
///   gained                             behind the output gain
///   low_shelf, high_shelf              behind each output filter, whether it runs or not
///   pre_emphasis                       behind the pre-emphasis
///   output                             behind the volume: the sample before it is cut to 16 bits
struct LARYNTH_INTERFACE(ILarynthSignals, "c4df327a-2ae5-457a-a743-79afd2796537") : IUnknown {
    virtual HRESULT LARYNTH_CALL GetSignalsCount(int* pnCount /*out*/) = 0;
    /// Copies name and terminating zero, at most 16 bytes. E_FAIL for an index outside and when `nLen` bytes
    /// are too few, E_POINTER when they are not writable.
    virtual HRESULT LARYNTH_CALL GetSignalName(int nIndex /*in*/, LPSTR pcBuffer /*out*/,
                                               int nLen /*in*/) = 0;
    /// Renders a packet as IACLIOProcess::Calculate does, to the same bits and with the same codes, and
    /// writes the signals: sample i of signal k to pdValues[k·nRowLength + i]. The caller owns array and
    /// output. E_INVALIDARG for a row length below the frame's, E_POINTER for an array that cannot be
    /// written, E_NOTIMPL unless all components are this system's own, as for ILarynthState; the components
    /// may then have received the packet.
    virtual HRESULT LARYNTH_CALL CalculateSignals(IUnknown* pInput /*in*/, double* pdValues /*out*/,
                                                  int nRowLength /*in*/, IUnknown** ppOutput /*out*/) = 0;
};
