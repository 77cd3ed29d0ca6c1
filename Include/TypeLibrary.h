// SPDX-License-Identifier: MIT
/// A type library: the description of a module's interfaces and classes that is no C++ and needs none.
/// Windows has interfaces of its own to read one by.
#pragma once

#include <larynth/Runtime.h>

#ifndef _WIN32

/// A file cannot be read, or carries no type library.
inline constexpr HRESULT TYPE_E_CANTLOADLIBRARY = static_cast<HRESULT>(0x80029C4A);
/// What a file carries is no valid type library.
inline constexpr HRESULT TYPE_E_INVDATAREAD = static_cast<HRESULT>(0x80028018);

/// Kinds of type.
inline constexpr LONG TKIND_RECORD = 1;
inline constexpr LONG TKIND_INTERFACE = 3;
inline constexpr LONG TKIND_COCLASS = 5;

/// Which way a parameter carries its value; both may be set.
inline constexpr LONG PARAMFLAG_IN = 1;
inline constexpr LONG PARAMFLAG_OUT = 2;

/// The interface that a class is used by when nothing else is asked for.
inline constexpr LONG IMPLTYPEFLAG_DEFAULT = 1;

/// About a library.
struct LarynthLibraryInfo {
    LPCSTR Name;
    LPCSTR HelpString;  ///< Empty when there is none.
    GUID Id;
    LONG MajorVersion;
    LONG MinorVersion;
    LONG Locale;  ///< 1033: English (United States).
    int TypesCount;
};

/// About an interface or a class.
struct LarynthTypeInfo {
    LONG Kind;  ///< TKIND_…; other numbers are kinds that this system does not use.
    LPCSTR Name;
    LPCSTR HelpString;  ///< Empty when there is none.
    GUID Id;            ///< GUID_NULL when there is none.
    LPCSTR Base;        ///< An interface's base; empty for other types.
    int FunctionsCount;
    int InterfacesCount;  ///< A class's interfaces; 0 for other types.
};

/// About a method.
struct LarynthFunctionInfo {
    LPCSTR Name;
    int Slot;           ///< In the method table, the first method of IUnknown being 0.
    LPCSTR ReturnType;  ///< As in the interface description language: "HRESULT", "double*", "IUnknown**".
    int ParametersCount;
};

/// About a parameter.
struct LarynthParameterInfo {
    LPCSTR Name;
    LPCSTR Type;     ///< Spelled as a return type.
    LONG Direction;  ///< PARAMFLAG_…
};

/// About an interface of a class.
struct LarynthImplementedInfo {
    LPCSTR Name;
    GUID Id;     ///< GUID_NULL when there is none.
    LONG Flags;  ///< IMPLTYPEFLAG_…
};

/// A library that was read. It never changes and may be used by several threads. Texts belong to the library
/// and are valid as long as it lives. Indices count from 0 in the library's order; E_FAIL for one outside,
/// E_POINTER for a bad out-pointer, nothing changed.
struct LARYNTH_INTERFACE(ILarynthTypeLibrary, "7f1c52de-90b4-4c06-a5a8-6a1a7c2f9b35") : IUnknown {
    /// About the library itself.
    virtual HRESULT LARYNTH_CALL GetLibrary(LarynthLibraryInfo* pInfo /*out*/) = 0;
    /// An interface or a class.
    virtual HRESULT LARYNTH_CALL GetType(int nType /*in*/, LarynthTypeInfo* pInfo /*out*/) = 0;
    /// A method that the interface adds to its base.
    virtual HRESULT LARYNTH_CALL GetFunction(int nType /*in*/, int nFunction /*in*/,
                                             LarynthFunctionInfo* pInfo /*out*/) = 0;
    /// A parameter of such a method.
    virtual HRESULT LARYNTH_CALL GetParameter(int nType /*in*/, int nFunction /*in*/, int nParameter /*in*/,
                                              LarynthParameterInfo* pInfo /*out*/) = 0;
    /// An interface of a class.
    virtual HRESULT LARYNTH_CALL GetImplemented(int nType /*in*/, int nInterface /*in*/,
                                                LarynthImplementedInfo* pInfo /*out*/) = 0;
};

/// Reads a type library: a ".tlb" file, or the one that a module file carries. The caller owns the reference.
/// TYPE_E_CANTLOADLIBRARY when the file cannot be read or carries none, TYPE_E_INVDATAREAD when what it
/// carries is no valid library, E_POINTER; LarynthLastError() then says why.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL LarynthLoadTypeLibrary(LPCSTR sFile,
                                                                ILarynthTypeLibrary** ppLibrary);

#endif

/// Writes into the user's registration store where a module's type library is: the one that the module
/// carries or, when it carries none that can be read, the file of the same name with the extension ".tlb"
/// (the path's last "." and what follows it give way). The path is absolute. Everything or nothing is
/// written. The codes of LarynthLoadTypeLibrary for the file that was tried last, and those of
/// ILarynthRegistry.
LARYNTH_RUNTIME_API HRESULT LARYNTH_CALL LarynthRegisterTypeLibrary(LPCSTR sModulePath);
