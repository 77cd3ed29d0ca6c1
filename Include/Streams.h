// SPDX-License-Identifier: MIT
/// Lists, markers and sample blocks: how utterances travel in and sound travels out. The synthesizer calls
/// the methods of slots 4, 7, 8, 10 and 11 of a list, 3 and 4 of a holder, 3 and 6 of a block; the rest
/// serves hosts.
#pragma once

#include <larynth/Interface.h>

/// An ordered list of object references.
struct LARYNTH_INTERFACE(ITTSObjectList, "e9a5642c-7d07-43e5-b6e5-c77a2ee05f69") : IUnknown {
    virtual HRESULT LARYNTH_CALL Clear() = 0;                      ///< Releases every item.
    virtual HRESULT LARYNTH_CALL Add(IUnknown* pItem /*in*/) = 0;  ///< Appends; E_POINTER for null.
    /// In front of `nIndex`; E_FAIL.
    virtual HRESULT LARYNTH_CALL Insert(int nIndex /*in*/, IUnknown* pItem /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL Remove(int nIndex /*in*/) = 0;  ///< E_FAIL for an index outside.
    virtual HRESULT LARYNTH_CALL GetCount(int* pnCount /*out*/) = 0;
    /// Item `nIndex` as `riid`, with a reference for the caller. E_FAIL for an index outside.
    virtual HRESULT LARYNTH_CALL GetItem(int nIndex /*in*/, REFIID riid /*in*/,
                                         IUnknown** ppItem /*out*/) = 0;
    /// Replaces; E_FAIL.
    virtual HRESULT LARYNTH_CALL SetItem(int nIndex /*in*/, IUnknown* pItem /*in*/) = 0;
    /// While locked, the list refuses changes with E_FAIL. Locks nest.
    virtual HRESULT LARYNTH_CALL Lock() = 0;
    virtual HRESULT LARYNTH_CALL Unlock() = 0;  ///< E_FAIL when not locked.
};

/// One attached object: a marker of the host's, a packet, a voice.
struct LARYNTH_INTERFACE(ITTSSyncHolder, "df219833-d97b-401b-b581-437a489229e0") : IUnknown {
    /// Held with a reference; may be null.
    virtual HRESULT LARYNTH_CALL SetObject(IUnknown* pObject /*in*/) = 0;
    /// The attached object as `riid`; null and S_OK when there is none.
    virtual HRESULT LARYNTH_CALL GetObject(REFIID riid /*in*/, IUnknown** ppObject /*out*/) = 0;
};

/// A block of samples. Format 2 is 16-bit signed, native byte order, one channel; no other is known here.
struct LARYNTH_INTERFACE(ITTSSoundData, "f054e0b8-3ce3-494d-b394-7d9c777a5bbb") : IUnknown {
    virtual HRESULT LARYNTH_CALL SetFormat(int nFormat /*in*/) = 0;     ///< E_FAIL unless 2.
    virtual HRESULT LARYNTH_CALL GetFormat(int* pnFormat /*out*/) = 0;  ///< 0 until set.
    /// A view of all samples, valid until the block next changes; it is not the caller's to free.
    virtual HRESULT LARYNTH_CALL GetSamples(const short** ppSamples /*out*/, int* pnCount /*out*/) = 0;
    /// Appends a copy. E_FAIL for another format or a negative count, E_POINTER for unreadable samples.
    virtual HRESULT LARYNTH_CALL AppendSamples(int nFormat /*in*/, short* pSamples /*in*/,
                                               int nCount /*in*/) = 0;
};
