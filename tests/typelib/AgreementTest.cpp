// SPDX-License-Identifier: MIT
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "tests/typelib/Agreement.h"
#include "tests/typelib/HeaderText.h"
#include "tests/typelib/Listing.h"

namespace {

/// The interfaces of the headers that the library describes.
std::map<std::string, std::string> DeclaredInterfaces() {
    std::map<std::string, std::string> declared;
    for (const char* header : {"Packet.h", "Resonators.h", "Sources.h", "Synthesizer.h", "Tracts.h"}) {
        std::ifstream file(std::string(LARYNTH_HEADERS "/") + header);
        EXPECT_TRUE(file) << header;
        const std::string text(std::istreambuf_iterator<char>(file), {});
        declared.merge(HeaderListings(text));
    }
    return declared;
}

std::map<std::string, std::string> DescribedInterfaces() {
    const ComPtr<ILarynthTypeLibrary> library = LoadLibraryOf(LARYNTH_MODULE);
    LarynthLibraryInfo about{};
    library->GetLibrary(&about);
    std::map<std::string, std::string> described;
    for (int i = 0; i < about.TypesCount; ++i) {
        LarynthTypeInfo type{};
        library->GetType(i, &type);
        if (type.Kind == TKIND_INTERFACE) described[type.Name] = InterfaceListing(*library.Get(), i);
    }
    return described;
}

// Types of methods and identifiers are held by the assertions in the generated source.

TEST(Agreement, TheCompilersSlotsAreTheLibrarys) {
    EXPECT_EQ(AgreedSlots().size(), 177U);
    for (const AgreedSlot& slot : AgreedSlots()) EXPECT_EQ(slot.Compiled, slot.Described) << slot.Method;
}

TEST(Agreement, HeadersAndLibraryDeclareTheSameNamesAndDirections) {
    const auto declared = DeclaredInterfaces();
    const auto described = DescribedInterfaces();
    EXPECT_EQ(declared.size(), 31U);
    for (const auto& [name, listing] : declared) {
        ASSERT_TRUE(described.contains(name)) << name << " is not in the library";
        EXPECT_EQ(described.at(name), listing) << "left the library, right the header";
    }
    for (const auto& [name, listing] : described)
        EXPECT_TRUE(declared.contains(name)) << name << " is in no header";
}

TEST(Agreement, AHeaderIsReadAsItIsWritten) {
    const auto listings = HeaderListings(R"(
/// Not a LARYNTH_ thing: "text".
struct LARYNTH_INTERFACE(IMarker, "01234567-89ab-cdef-0123-456789abcdef") : IUnknown {};

struct LARYNTH_INTERFACE(IExample, "11234567-89ab-cdef-0123-456789abcdef") : IMarker {
    virtual HRESULT LARYNTH_CALL First() = 0;  ///< First; of (two).
    /// Second.
    virtual ULONG LARYNTH_CALL Second(IUnknown** ppRes /*out*/, unsigned short* pWords /*in*/,
                                      REFIID riid /*in*/, LONG* pnID /*out*/) = 0;
};)");
    EXPECT_EQ(listings.size(), 2U);
    EXPECT_EQ(listings.at("IMarker"),
              "interface IMarker {01234567-89ab-cdef-0123-456789abcdef} : IUnknown\n");
    EXPECT_EQ(listings.at("IExample"),
              "interface IExample {11234567-89ab-cdef-0123-456789abcdef} : IMarker\n"
              "  3 HRESULT First()\n"
              "  4 ULONG Second([out] IUnknown** ppRes, [in] unsigned short* pWords, [in] _GUID* riid, "
              "[out] long* pnID)\n");
}

}  // namespace
