// SPDX-License-Identifier: MIT
/// The registration store: a tree of keys, each with a default value and named values, all of them texts. It
/// is one file that any number of processes may use at once.
#pragma once

#include <larynth/Runtime.h>

/// A view of a registry. A key is named by its path: the long name of a root ("HKEY_CLASSES_ROOT" and the
/// other standard ones), then the names below it, separated by backslashes. Names of keys and values compare
/// without regard to the case of ASCII letters; the spelling that came first stays. Texts are UTF-8.
///
/// A view is used by one thread at a time. What is written belongs to a transaction, and another view sees
/// all of a transaction or nothing, also after a crash. A text that comes out is valid until the next call.
///
/// Codes: REGDB_E_KEYMISSING where a key or value is not there, REGDB_E_READREGDB and REGDB_E_WRITEREGDB when
/// the store fails, is damaged or is one that others can change (LarynthLastError() says why), E_INVALIDARG
/// for a malformed path, E_POINTER, E_OUTOFMEMORY. Who reads waits a second at most for another process.
///
/// On Windows it is the system's registry, which has no transactions: what is written is there at once, Begin
/// and Commit do nothing, and Rollback gives E_NOTIMPL.
struct LARYNTH_INTERFACE(ILarynthRegistry, "0b6e4f9a-3c1d-4a57-9d3e-52f7a0c9e614") : IUnknown {
    /// Waits up to a minute for other writers and checks that the store is whole: nothing is ever written to
    /// a damaged one. E_FAIL within a transaction.
    virtual HRESULT LARYNTH_CALL Begin() = 0;
    /// E_FAIL outside a transaction. When it fails for another reason, Rollback ends the transaction.
    virtual HRESULT LARYNTH_CALL Commit() = 0;
    virtual HRESULT LARYNTH_CALL Rollback() = 0;  ///< As does the release of the view.

    /// With the keys above it, as far as they are not there yet. E_FAIL outside a transaction.
    virtual HRESULT LARYNTH_CALL CreateKey(LPCSTR sKey /*in*/) = 0;
    /// With everything below it; S_FALSE when it is not there. Not for a root. E_FAIL outside a transaction.
    virtual HRESULT LARYNTH_CALL DeleteKey(LPCSTR sKey /*in*/) = 0;
    /// The empty name is the default value's. E_FAIL outside a transaction.
    virtual HRESULT LARYNTH_CALL SetValue(LPCSTR sKey /*in*/, LPCSTR sName /*in*/, LPCSTR sValue /*in*/) = 0;

    /// The empty name is the default value's.
    virtual HRESULT LARYNTH_CALL GetValue(LPCSTR sKey /*in*/, LPCSTR sName /*in*/,
                                          LPCSTR* psValue /*out*/) = 0;
    /// Keys directly below, and named values: a default value does not count.
    virtual HRESULT LARYNTH_CALL GetCounts(LPCSTR sKey /*in*/, int* pnSubkeys /*out*/,
                                           int* pnValues /*out*/) = 0;
    /// The name of a key directly below, by its place in alphabetical order, from 0.
    virtual HRESULT LARYNTH_CALL GetSubkey(LPCSTR sKey /*in*/, int nIndex /*in*/, LPCSTR* psName /*out*/) = 0;
};

/// A view of the user's store: the file $LARYNTH_REGISTRY, else larynth/registry.db below $XDG_DATA_HOME,
/// else below ~/.local/share. The path has to be absolute. In a process that runs with more rights than its
/// caller (set-user-ID and the like) the variables do not count: there the store is empty and cannot be
/// written. It is used only where file and folder belong to the user or root and nobody else may write to
/// either. The file (mode 0600) and the folders above it (0700) come into being with the first transaction;
/// until then the store is empty. While a module is registered or unregistered, its thread gets a view whose
/// transactions are parts of one, and which is shared: its release ends none. The caller owns the reference.
/// E_POINTER.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL LarynthOpenRegistry(ILarynthRegistry** ppRegistry);

/// Loads a module (the path as for LarynthLoadModule) and has it write its classes into the user's store
/// (takes them out again): all that it writes, in one transaction, or where it fails nothing. Unregistering
/// creates no store. CO_E_DLLNOTFOUND when it cannot be loaded, CO_E_ERRORINDLL when it does not register
/// itself, E_POINTER, the store's code or the module's own, and S_FALSE when something could not be taken
/// out; LarynthLastError() then says more.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL LarynthRegisterModule(LPCSTR sPath);
/// The contrary; see LarynthRegisterModule.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL LarynthUnregisterModule(LPCSTR sPath);

#ifndef _WIN32

/// A view of the store that all users share, larynth/registry.db in the system's folder of state (usually
/// /var/lib), in which a class is looked up when the user's store does not know it. It is used under the same
/// conditions. Where $LARYNTH_REGISTRY is set, that store alone counts: there the view is empty and cannot be
/// written. The caller owns the reference. E_POINTER.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL LarynthOpenSystemRegistry(ILarynthRegistry** ppRegistry);

/// A registry in memory with what the module would write into the store; nothing is stored. Codes as for
/// LarynthRegisterModule. The caller owns the reference.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL LarynthDescribeModule(LPCSTR sPath, ILarynthRegistry** ppRegistry);

#endif
