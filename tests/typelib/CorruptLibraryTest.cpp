// SPDX-License-Identifier: MIT
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <span>
#include <vector>

#include "runtime/typelib/Contents.h"
#include "runtime/typelib/Tables.h"

namespace {

using larynth::BadTypeLibrary;
using larynth::ReadTypeLibrary;
using larynth::TypeLibraryContents;

TypeLibraryContents Read(std::span<const char> bytes) { return ReadTypeLibrary(std::as_bytes(bytes)); }

TEST(CorruptLibrary, AnyTruncationIsRefusedAndAnyWrongByteIsRefusedOrRead) {
    constexpr int kMasks[] = {0xFF, 0x01, 0x80};
    std::ifstream file(LARYNTH_TYPE_LIBRARY, std::ios::binary);
    std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    int refused = 0;
    for (std::size_t offset = 0; offset < bytes.size(); ++offset) {
        // In a block of their own size.
        const std::vector<char> first(bytes.data(), bytes.data() + offset);
        EXPECT_THROW(Read(first), BadTypeLibrary) << offset;
        const char right = bytes[offset];
        bytes[offset] = static_cast<char>(right ^ kMasks[offset % 3]);
        try {
            // Reading stops at twice the file's 24 KB, and a method takes 36 of them.
            std::size_t functions = 0;
            for (const auto& type : Read(bytes).Types) functions += type.Functions.size();
            EXPECT_LT(functions, 1400U) << offset;
        } catch (const BadTypeLibrary&) {
            ++refused;
        }
        bytes[offset] = right;
    }
    EXPECT_GT(refused, 1000);
    EXPECT_EQ(Read(bytes).Types.size(), 45U);
}

}  // namespace
