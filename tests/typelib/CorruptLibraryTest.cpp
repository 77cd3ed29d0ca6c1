// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <vector>

#include "runtime/typelib/Contents.h"
#include "runtime/typelib/Tables.h"

namespace {

using larynth::BadTypeLibrary;
using larynth::FileBytes;
using larynth::ReadTypeLibrary;
using larynth::TypeLibraryContents;

/// The library as built, to be damaged.
class LibraryBytes {
  public:
    LibraryBytes() {
        std::ifstream file(LARYNTH_TYPE_LIBRARY, std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(file), {});
        bytes_.resize(text.size());
        std::memcpy(bytes_.data(), text.data(), text.size());
    }

    std::size_t Size() const { return bytes_.size(); }
    std::byte& operator[](std::size_t offset) { return bytes_[offset]; }
    std::uint32_t At(std::size_t offset) const { return FileBytes(bytes_).At<std::uint32_t>(offset); }
    void Set(std::size_t offset, std::uint32_t value) { std::memcpy(&bytes_[offset], &value, sizeof(value)); }

    /// Where the directory entry of a segment is; its first word is the segment's own offset.
    std::size_t Segment(std::size_t number) const { return 0x54 + At(0x20) * 4 + number * 16; }
    /// Where the record of a type is.
    std::size_t Type(std::size_t number) const { return At(Segment(0)) + number * 0x64; }

    TypeLibraryContents Read() const { return ReadTypeLibrary(bytes_); }
    /// Of the first bytes only, in a block of their own size.
    TypeLibraryContents ReadFirst(std::size_t size) const {
        const std::vector<std::byte> first(bytes_.data(), bytes_.data() + size);
        return ReadTypeLibrary(first);
    }

  private:
    std::vector<std::byte> bytes_;
};

TEST(CorruptLibrary, AnyTruncationIsRefusedAndAnyWrongByteIsRefusedOrRead) {
    constexpr std::byte kMasks[] = {std::byte{0xFF}, std::byte{0x01}, std::byte{0x80}};
    LibraryBytes library;
    int refused = 0;
    for (std::size_t offset = 0; offset < library.Size(); ++offset) {
        EXPECT_THROW(library.ReadFirst(offset), BadTypeLibrary) << offset;
        const std::byte mask = kMasks[offset % 3];
        library[offset] ^= mask;
        try {
            // Reading stops at twice the file's 24 KB, and a method takes 36 of them.
            std::size_t functions = 0;
            for (const auto& type : library.Read().Types) functions += type.Functions.size();
            EXPECT_LT(functions, 1400U) << offset;
        } catch (const BadTypeLibrary&) {
            ++refused;
        }
        library[offset] ^= mask;
    }
    EXPECT_GT(refused, 1000);
    EXPECT_EQ(library.Read().Types.size(), 45U);
}

TEST(CorruptLibrary, ContradictionsAreNamed) {
    constexpr std::size_t kParams = 0;  // ILarynthParams
    constexpr std::size_t kClass = 32;  // LarynthParams
    const struct {
        const char* Reason;
        std::function<void(LibraryBytes&)> Damage;
    } rows[] = {
        {"not \"MSFT\"", [](LibraryBytes& b) { b.Set(0, 0x54465300); }},
        {"neither 32-bit nor 64-bit", [](LibraryBytes& b) { b.Set(0x14, 0x42); }},
        {"reach beyond", [](LibraryBytes& b) { b.Set(0x20, 0xFFFFFFFF); }},
        {"reach beyond", [](LibraryBytes& b) { b.Set(b.Segment(7), 0xFFFFFFF0); }},
        {"types without a record", [](LibraryBytes& b) { b.Set(b.Segment(0) + 4, 44 * 0x64); }},
        {"reach beyond", [](LibraryBytes& b) { b.Set(b.Type(kParams) + 0x34, 0x7FFFFFFF); }},
        {"reach beyond", [](LibraryBytes& b) { b.Set(b.Type(kParams) + 4, 0xFFFFFFFF); }},
        {"the members of types overlap",
         [](LibraryBytes& b) {
             for (std::size_t type = 0; type < 32;
                  ++type) {  // all interfaces with the members of the largest
                 b.Set(b.Type(type) + 4, b.At(b.Type(1) + 4));
                 b.Set(b.Type(type) + 0x18, 21);
             }
         }},
        {"too short a record", [](LibraryBytes& b) { b.Set(b.At(b.Type(kParams) + 4) + 4 + 20, 200); }},
        {"too many levels of pointers", [](LibraryBytes& b) { b.Set(b.At(b.Segment(9)) + 4, 0); }},
        {"fewer interfaces than it counts", [](LibraryBytes& b) { b.Set(b.Type(kClass) + 0x4C, 12); }},
    };
    for (const auto& row : rows) {
        LibraryBytes library;
        row.Damage(library);
        try {
            library.Read();
            ADD_FAILURE() << "accepted: " << row.Reason;
        } catch (const BadTypeLibrary& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(row.Reason));
        }
    }
}

}  // namespace
