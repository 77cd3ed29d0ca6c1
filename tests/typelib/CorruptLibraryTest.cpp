// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>

#include "runtime/typelib/Contents.h"
#include "runtime/typelib/Tables.h"
#include "tests/support/Content.h"

namespace {

/// The library as built, to be damaged.
struct Library {
    std::string bytes = ContentOf(LARYNTH_TYPE_LIBRARY);

    std::uint32_t At(std::size_t offset) const {
        return larynth::FileBytes(std::as_bytes(std::span(bytes))).At<std::uint32_t>(offset);
    }
    void Set(std::size_t offset, std::uint32_t value) { std::memcpy(&bytes[offset], &value, sizeof(value)); }
    /// Where the directory entry of a segment is; its first word is the segment's own offset.
    std::size_t Segment(std::size_t number) const { return 0x54 + At(0x20) * 4 + number * 16; }
    /// Where the record of a type is.
    std::size_t Type(std::size_t number) const { return At(Segment(0)) + number * 0x64; }
};

TEST(CorruptLibrary, ContradictionsAreNamed) {
    constexpr std::size_t kParams = 0;  // ILarynthParams
    constexpr std::size_t kClass = 34;  // LarynthParams
    const struct {
        const char* Reason;
        std::function<void(Library&)> Damage;
    } rows[] = {
        {"reach beyond", [](Library& b) { b.Set(b.Segment(7), 0xFFFFFFF0); }},
        {"types without a record", [](Library& b) { b.Set(b.Segment(0) + 4, 46 * 0x64); }},
        {"the members of types overlap",
         [](Library& b) {
             // All interfaces with the members of the largest.
             for (std::size_t type = 0; type < 34; ++type) {
                 b.Set(b.Type(type) + 4, b.At(b.Type(1) + 4));
                 b.Set(b.Type(type) + 0x18, 21);
             }
         }},
        {"the texts of types overlap",
         [](Library& b) {
             // The texts begin where the file does: with "MS", the size of one of 21 kB.
             b.Set(b.Segment(8), 0), b.Set(b.Segment(8) + 4, 23000);
             for (std::size_t type = 0; type < 2; ++type) b.Set(b.Type(type) + 0x3C, 0);
         }},
        {"too short a record", [](Library& b) { b.Set(b.At(b.Type(kParams) + 4) + 4 + 20, 200); }},
        {"too many levels of pointers", [](Library& b) { b.Set(b.At(b.Segment(9)) + 4, 0); }},
        {"fewer interfaces than it counts", [](Library& b) { b.Set(b.Type(kClass) + 0x4C, 12); }},
    };
    for (const auto& row : rows) {
        Library library;
        row.Damage(library);
        try {
            larynth::ReadTypeLibrary(std::as_bytes(std::span(library.bytes)));
            ADD_FAILURE() << "accepted: " << row.Reason;
        } catch (const larynth::BadTypeLibrary& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(row.Reason));
        }
    }
}

}  // namespace
