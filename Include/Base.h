// SPDX-License-Identifier: MIT
/// Types, status codes and the two base interfaces of the component model.
///
/// Widths are those of the platform of origin on every platform: HRESULT and LONG have 32 bits, GUID has
/// 16 bytes aligned to 4. Where that platform's own component headers exist, this header is the one that
/// includes them instead. Their macros stay defined for headers that come later, so that interface, small,
/// near, far, IN and OUT are no names here.
#pragma once

#include <cstdint>

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <objbase.h>

/// Stands where a calling convention is written: every interface method, every override, every entry point.
#define LARYNTH_CALL STDMETHODCALLTYPE

#else

#include <bit>

using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using BOOL = std::int32_t;
using HRESULT = std::int32_t;  ///< Negative: failure. Zero and above: success.
using LPSTR = char*;           ///< A text that ends with a zero.
using LPCSTR = const char*;    ///< Such a text, which is not changed.

/// Stands where a calling convention is written: every interface method, every override, every entry point.
#define LARYNTH_CALL

/// An identifier of an interface or a class: 128 bits that nothing else has.
struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
static_assert(sizeof(GUID) == 16 && alignof(GUID) == 4);

using IID = GUID;    ///< Of an interface.
using CLSID = GUID;  ///< Of a class.
using REFIID = const IID&;
using REFCLSID = const CLSID&;

/// Identifiers are compared as sixteen bytes.
constexpr bool operator==(const GUID& left, const GUID& right) noexcept {
    struct Halves {
        std::uint64_t first, second;
    };
    const auto a = std::bit_cast<Halves>(left), b = std::bit_cast<Halves>(right);
    return a.first == b.first && a.second == b.second;
}

/// Sixteen zero bytes: "no particular interface".
inline constexpr GUID GUID_NULL{};

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

/// Success.
inline constexpr HRESULT S_OK = 0;
/// Success, with nothing to do or to give.
inline constexpr HRESULT S_FALSE = 1;
/// Not supported by this object.
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001);
/// The object has no such interface.
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
/// A pointer is null, or cannot be read or written.
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
/// It failed; the method says when.
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
/// Memory ran out.
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
/// A value cannot be used.
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
/// Not as a part of another object.
inline constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110);
/// The module has no such class.
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = static_cast<HRESULT>(0x80040111);
/// The registration store cannot be read.
inline constexpr HRESULT REGDB_E_READREGDB = static_cast<HRESULT>(0x80040150);
/// The registration store cannot be written.
inline constexpr HRESULT REGDB_E_WRITEREGDB = static_cast<HRESULT>(0x80040151);
/// The registration store has no such key or value.
inline constexpr HRESULT REGDB_E_KEYMISSING = static_cast<HRESULT>(0x80040152);
/// Nobody offers the class.
inline constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154);
/// A module cannot be loaded.
inline constexpr HRESULT CO_E_DLLNOTFOUND = static_cast<HRESULT>(0x800401F8);
/// A file is no component module.
inline constexpr HRESULT CO_E_ERRORINDLL = static_cast<HRESULT>(0x800401F9);
/// No class object has this number.
inline constexpr HRESULT CO_E_OBJNOTREG = static_cast<HRESULT>(0x800401FB);
/// A call has raised an exception.
inline constexpr HRESULT DISP_E_EXCEPTION = static_cast<HRESULT>(0x80020009);

/// Whether a status code says success.
constexpr bool SUCCEEDED(HRESULT hr) noexcept { return hr >= 0; }
/// Whether a status code says failure.
constexpr bool FAILED(HRESULT hr) noexcept { return hr < 0; }

#endif
