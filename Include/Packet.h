// SPDX-License-Identifier: MIT
/// The parameter packet: everything that the synthesizer needs to know about one frame of speech.
///
/// Rules for all methods: a null or unwritable out-pointer gives E_POINTER and changes nothing; setters take
/// any value and check no range; an interface written through an out-pointer carries a reference that the
/// caller owns.
#pragma once

#include <larynth/Interface.h>

/// Timing of the frame.
struct LARYNTH_INTERFACE(ILarynthParams, "3ceaaf30-8142-48ea-91d9-3080f9b439fc") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetSampleFreq(double dValue /*in*/) = 0;     ///< Hz; kept as its reciprocal.
    virtual HRESULT LARYNTH_CALL GetSampleFreq(double* pdValue /*out*/) = 0;  ///< Hz; 11025 for a new packet.
    virtual HRESULT LARYNTH_CALL SetFrameLen(int nValue /*in*/) = 0;          ///< Samples.
    virtual HRESULT LARYNTH_CALL GetFrameLen(int* pnValue /*out*/) = 0;  ///< Samples; 0 for a new packet.
};

/// The voice of the frame. GetID… give the item's ID for ITTSDoublePacket.
struct LARYNTH_INTERFACE(ILarynthVoiceParams, "9dfb369b-ab13-4fae-a276-55daa05f1119") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetAV(double dValue /*in*/) = 0;  ///< Voicing amplitude, linear.
    virtual HRESULT LARYNTH_CALL GetAV(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDAV(int* pnID /*out*/) = 0;
    /// Fundamental frequency, Hz; 0 is unvoiced.
    virtual HRESULT LARYNTH_CALL SetF0(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetF0(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDF0(int* pnID /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetOQ(double dValue /*in*/) = 0;  ///< Open quotient: open phase / period.
    virtual HRESULT LARYNTH_CALL GetOQ(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDOQ(int* pnID /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetFL(double dValue /*in*/) = 0;  ///< Flutter depth, a fraction of F0.
    virtual HRESULT LARYNTH_CALL GetFL(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDFL(int* pnID /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetFLT(double dValue /*in*/) = 0;  ///< Flutter time step, 10^-5 s a sample.
    virtual HRESULT LARYNTH_CALL GetFLT(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDFLT(int* pnID /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetDI(double dValue /*in*/) = 0;  ///< Diplophonia, 0 (none) to 1.
    virtual HRESULT LARYNTH_CALL GetDI(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDDI(int* pnID /*out*/) = 0;
    /// Spectral tilt, 0 to 41; used truncated.
    virtual HRESULT LARYNTH_CALL SetTL(double dValue /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetTL(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDTL(int* pnID /*out*/) = 0;
};

/// Aspiration noise of the frame.
struct LARYNTH_INTERFACE(ILarynthAspirationParams, "6301bbfc-a0c5-454e-8ff9-bb510944fe0c") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetAH(double dValue /*in*/) = 0;  ///< Aspiration amplitude, linear.
    virtual HRESULT LARYNTH_CALL GetAH(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDAH(int* pnID /*out*/) = 0;
};

/// Frication noise of the frame.
struct LARYNTH_INTERFACE(ILarynthFricationParams, "6fced11d-2bd8-41e6-847a-8387cdde8d51") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetAF(double dValue /*in*/) = 0;  ///< Frication amplitude, linear.
    virtual HRESULT LARYNTH_CALL GetAF(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDAF(int* pnID /*out*/) = 0;
};

/// The cascade tract in resonator form. A handed-out object is a live view of the packet's entry and keeps
/// the packet alive.
struct LARYNTH_INTERFACE(ILarynthVocalTractParams, "3a124c64-7e02-4f05-b7c1-dce27f7695f5") : IUnknown {
    virtual HRESULT LARYNTH_CALL GetResonatorsCount(int* pnCount /*out*/) = 0;      ///< 6.
    virtual HRESULT LARYNTH_CALL GetAntiResonatorsCount(int* pnCount /*out*/) = 0;  ///< 1.
    /// A view of cascade resonator `nIndex` as `riid`: 0 is the nasal pole, 1 to 5 are the formants. E_FAIL
    /// for an index outside or when no object can be made; the query's code for an interface it lacks.
    virtual HRESULT LARYNTH_CALL GetResonator(int nIndex /*in*/, IUnknown** ppRes /*out*/,
                                              REFIID riid /*in*/) = 0;
    /// A view of antiresonator `nIndex` (0 is the nasal zero) as `riid`; failures as for GetResonator.
    virtual HRESULT LARYNTH_CALL GetAntiResonator(int nIndex /*in*/, IUnknown** ppRes /*out*/,
                                                  REFIID riid /*in*/) = 0;
    /// 1 while the resonator form counts as valid, else 0.
    virtual HRESULT LARYNTH_CALL IsResDataValid(LONG* pbValid /*out*/) = 0;
};

/// The parallel tract.
struct LARYNTH_INTERFACE(ILarynthParallelTractParams, "66080f17-4c96-48e2-9cbd-0ba3a1a6bcde") : IUnknown {
    virtual HRESULT LARYNTH_CALL GetResonatorsCount(int* pnCount /*out*/) = 0;  ///< 7.
    /// A view of parallel resonator `nIndex` as `riid`; failures as for the cascade.
    virtual HRESULT LARYNTH_CALL GetResonator(int nIndex /*in*/, IUnknown** ppRes /*out*/,
                                              REFIID riid /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL SetAB(double dValue /*in*/) = 0;  ///< Bypass gain, linear.
    virtual HRESULT LARYNTH_CALL GetAB(double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIDAB(int* pnID /*out*/) = 0;
};

/// The cascade tract as one rational filter,
/// y[n] = Σ beta[k]·x[n−k] (k = 0…2) + Σ alpha[k−1]·y[n−k] (k = 1…12).
struct LARYNTH_INTERFACE(ILarynthVocalTractFilterParams, "b120a366-f0bb-49cf-82f2-dc05873f9bd0") : IUnknown {
    /// Number of feedback values, 12.
    virtual HRESULT LARYNTH_CALL GetAlphaDegree(int* pnDegree /*out*/) = 0;
    /// Number of feed-forward values, 3.
    virtual HRESULT LARYNTH_CALL GetBetaDegree(int* pnDegree /*out*/) = 0;
    /// E_FAIL: bad index.
    virtual HRESULT LARYNTH_CALL SetAlpha(int nIndex /*in*/, double dValue /*in*/) = 0;
    /// E_FAIL: bad index.
    virtual HRESULT LARYNTH_CALL GetAlpha(int nIndex /*in*/, double* pdValue /*out*/) = 0;
    /// E_FAIL: bad index.
    virtual HRESULT LARYNTH_CALL SetBeta(int nIndex /*in*/, double dValue /*in*/) = 0;
    /// E_FAIL: bad index.
    virtual HRESULT LARYNTH_CALL GetBeta(int nIndex /*in*/, double* pdValue /*out*/) = 0;
    /// Does nothing: resonators are not derived from filters.
    virtual HRESULT LARYNTH_CALL ConvertFromFilter() = 0;
    virtual HRESULT LARYNTH_CALL ConvertToFilter() = 0;  ///< Computes both lists from the resonators.
    virtual HRESULT LARYNTH_CALL IsFilterDataValid(LONG* pbValid /*out*/) = 0;  ///< 2 while valid, else 0.
};

/// The packet's 52 numbers by index, ID or name. Values go straight to storage: they reach a resonator only
/// while that is in frequency form. E_FAIL for an index, ID or name that names no item.
struct LARYNTH_INTERFACE(ITTSDoublePacket, "78b7d0ac-8477-4ce0-8e4c-da11b43c589b") : IUnknown {
    virtual HRESULT LARYNTH_CALL GetItemsCount(int* pnCount /*out*/) = 0;  ///< 52.
    virtual HRESULT LARYNTH_CALL GetIDFromIndex(int nIndex /*in*/, int* pnID /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL GetIndexFromID(int nID /*in*/, int* pnIndex /*out*/) = 0;
    /// Names are compared byte for byte. E_POINTER for a null name.
    virtual HRESULT LARYNTH_CALL GetIndexFromName(LPSTR sName /*in*/, int* pnIndex /*out*/) = 0;
    /// Copies name and terminating zero; E_FAIL when `nLen` bytes are too few, E_POINTER when they are not
    /// writable.
    virtual HRESULT LARYNTH_CALL GetItemName(int nIndex /*in*/, LPSTR pcBuffer /*out*/, int nLen /*in*/) = 0;
    /// The same text for every item; needs 27 bytes. The index and the language are not examined.
    virtual HRESULT LARYNTH_CALL GetItemDescription(int nIndex /*in*/, LPSTR pcBuffer /*out*/,
                                                    int nLen /*in*/, int idLanguage /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetItemValue(int nIndex /*in*/, double* pdValue /*out*/) = 0;
    virtual HRESULT LARYNTH_CALL SetItemValue(int nIndex /*in*/, double dValue /*in*/) = 0;
};

/// One frame as 41 signed 16-bit words in two's complement, 22050 Hz clock.
struct LARYNTH_INTERFACE(ITTSTruKlattParams, "2330fcf1-562a-44b8-8866-8d77e827062c") : IUnknown {
    /// Stores a copy of 41 words, which are not probed: E_POINTER for null alone; with `bConvert` also fills
    /// the packet from them. E_FAIL when there is no memory for the copy.
    virtual HRESULT LARYNTH_CALL SetTruPacket(unsigned short* pnPacket /*in*/, LONG bConvert /*in*/) = 0;
    /// Copies the stored words out as they were set. E_FAIL when none were set.
    virtual HRESULT LARYNTH_CALL GetTruPacket(unsigned short* pnPacket /*out*/, LONG bConvert /*in*/) = 0;
    /// Fills the packet from the stored words; E_FAIL: none.
    virtual HRESULT LARYNTH_CALL ConvertFromTru() = 0;
    virtual HRESULT LARYNTH_CALL ConvertToTru() = 0;  ///< Does nothing: words are never built from values.
};

/// Marks this system's packet; has no methods.
struct LARYNTH_INTERFACE(ITTSDecKlattParams, "c1acc990-6424-450a-a36b-f9b3ddcb369d") : IUnknown {};

/// Copying of whole objects.
struct LARYNTH_INTERFACE(IACLClone, "9ad9b9a2-5e78-454d-b065-a1c284cc4549") : IUnknown {
    /// Not supported by this system: E_FAIL.
    virtual HRESULT LARYNTH_CALL Copy(IUnknown* pSource /*in*/) = 0;
    /// A new object that holds a deep copy, as interface `Id`; E_FAIL when none can be made.
    virtual HRESULT LARYNTH_CALL Clone(REFIID Id /*in*/, IUnknown** ppClone /*out*/) = 0;
};
