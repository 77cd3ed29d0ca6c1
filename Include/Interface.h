// SPDX-License-Identifier: MIT
/// How an interface and a class are bound to their identifiers, and the two interfaces that every other one
/// stands on.
#pragma once

#include <cstddef>
#include <initializer_list>

#include <larynth/Base.h>

namespace larynth {

/// The identifier of an interface type. There is no primary definition: an interface that was declared
/// without an identifier does not compile where one is needed.
template <class Interface>
struct InterfaceId;

namespace detail {

constexpr std::uint32_t HexDigit(char c) {
    if (c >= '0' && c <= '9') return static_cast<std::uint32_t>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<std::uint32_t>(c - 'a' + 10);
    throw "an identifier is written in lower-case hexadecimal digits";
}

constexpr std::uint32_t HexField(const char* text, int digits) {
    std::uint32_t value = 0;
    for (int i = 0; i < digits; ++i) value = value * 16 + HexDigit(text[i]);
    return value;
}

}  // namespace detail

/// Reads "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx" while compiling; any other text is a compile error.
consteval GUID ParseGuid(const char (&text)[37]) {
    for (int dash : {8, 13, 18, 23}) {
        if (text[dash] != '-') throw "an identifier has groups of 8, 4, 4, 4 and 12 digits";
    }
    GUID id{detail::HexField(text, 8),
            static_cast<std::uint16_t>(detail::HexField(text + 9, 4)),
            static_cast<std::uint16_t>(detail::HexField(text + 14, 4)),
            {}};
    for (std::size_t i = 0; i < 2; ++i) {
        id.Data4[i] = static_cast<std::uint8_t>(detail::HexField(text + 19 + 2 * i, 2));
    }
    for (std::size_t i = 2; i < 8; ++i) {
        id.Data4[i] = static_cast<std::uint8_t>(detail::HexField(text + 20 + 2 * i, 2));
    }
    return id;
}

}  // namespace larynth

/// Opens the declaration of interface `Name`, `struct LARYNTH_INTERFACE(Name, "...") : IUnknown {`, with its
/// identifier both as IID_<Name> and bound to the type. The methods follow in slot order. Once released, a
/// line of an interface never changes: a changed interface is a new name with a new identifier. The word
/// `struct` stands in front of the macro so that tools which read sources without expanding macros see a
/// type, not a function.
#define LARYNTH_INTERFACE(Name, Text)                           \
    Name;                                                       \
    inline constexpr IID IID_##Name = larynth::ParseGuid(Text); \
    template <>                                                 \
    struct larynth::InterfaceId<Name> {                         \
        static constexpr const IID& value = IID_##Name;         \
    };                                                          \
    struct Name

/// Declares the identifier CLSID_<Name> of a creatable class.
#define LARYNTH_CLASS(Name, Text) inline constexpr CLSID CLSID_##Name = larynth::ParseGuid(Text)

#ifdef _WIN32

// The system declares both.
template <>
struct larynth::InterfaceId<IUnknown> {
    static constexpr const IID& value = IID_IUnknown;
};
template <>
struct larynth::InterfaceId<IClassFactory> {
    static constexpr const IID& value = IID_IClassFactory;
};

#else

/// The base of every interface. An object is destroyed by the release of its last reference.
struct LARYNTH_INTERFACE(IUnknown, "00000000-0000-0000-c000-000000000046") {
    /// Writes the object's `riid` interface with a reference for the caller; E_NOINTERFACE and null when the
    /// object has none, E_POINTER for a `ppv` that cannot be written.
    virtual HRESULT LARYNTH_CALL QueryInterface(REFIID riid /*in*/, void** ppv /*out*/) = 0;
    virtual ULONG LARYNTH_CALL AddRef() = 0;   ///< Returns the new count, for diagnosis only.
    virtual ULONG LARYNTH_CALL Release() = 0;  ///< Returns the new count, for diagnosis only.
};

/// Creates the objects of one class.
struct LARYNTH_INTERFACE(IClassFactory, "00000001-0000-0000-c000-000000000046") : IUnknown {
    /// Writes a new object's `riid` interface; the caller owns the reference. With an outer object only
    /// IUnknown may be asked for: CLASS_E_NOAGGREGATION. E_OUTOFMEMORY, E_NOINTERFACE, E_POINTER.
    virtual HRESULT LARYNTH_CALL CreateInstance(IUnknown* pUnkOuter /*in*/, REFIID riid /*in*/,
                                                void** ppvObject /*out*/) = 0;
    /// Holds the module in memory (true) or gives that hold back (false).
    virtual HRESULT LARYNTH_CALL LockServer(BOOL fLock /*in*/) = 0;
};

#endif
