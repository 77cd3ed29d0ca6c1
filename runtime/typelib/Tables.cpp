// SPDX-License-Identifier: MIT
#include "runtime/typelib/Tables.h"

#include <cstdio>

#include <larynth/Interface.h>

namespace larynth {

namespace {

constexpr std::uint32_t kSignature = 0x5446534D;  // "MSFT"
constexpr std::size_t kHeaderSize = 0x54;
constexpr std::size_t kSegmentsInFile = 15;
constexpr std::size_t kSegmentEntrySize = 16;
constexpr std::uint32_t kHelpFileFollows = 0x100;  // flag: the header is four bytes longer

// Type values.
constexpr int kPointer = 26;
constexpr int kNamedType = 29;

struct SimpleType {
    int Value;
    const char* Spelling;
};

constexpr SimpleType kSimpleTypes[] = {
    {2, "short"},          {3, "long"},           {4, "float"},
    {5, "double"},         {6, "CURRENCY"},       {7, "DATE"},
    {8, "BSTR"},           {9, "IDispatch*"},     {10, "SCODE"},
    {11, "VARIANT_BOOL"},  {12, "VARIANT"},       {13, "IUnknown*"},
    {16, "signed char"},   {17, "unsigned char"}, {18, "unsigned short"},
    {19, "unsigned long"}, {20, "hyper"},         {21, "unsigned hyper"},
    {22, "int"},           {23, "unsigned int"},  {24, "void"},
    {25, "HRESULT"},       {30, "LPSTR"},         {31, "LPWSTR"},
};

std::string SimpleSpelling(int value) {
    for (const SimpleType& type : kSimpleTypes) {
        if (type.Value == value) return type.Spelling;
    }
    return "VT_" + std::to_string(value);
}

bool IsImported(std::uint32_t reference) { return (reference & 1) != 0; }

}  // namespace

TypeLibraryTables::TypeLibraryTables(FileBytes file)
    : file_(file), segments_{file, file, file, file, file, file, file, file, file, file} {
    if (file.At<std::uint32_t>(0) != kSignature)
        throw BadTypeLibrary("the first four bytes are not \"MSFT\"");
    const auto flags = file.At<std::uint32_t>(0x14);
    switch (flags & 0xF) {
        case 1:
            slotSize_ = 4;
            break;
        case 3:
            slotSize_ = 8;
            break;
        default:
            throw BadTypeLibrary("the library is for neither 32-bit nor 64-bit programs");
    }
    typeOffsets_ = kHeaderSize + ((flags & kHelpFileFollows) != 0 ? 4 : 0);
    const auto types = file.At<std::uint32_t>(0x20);
    file.Part(typeOffsets_, std::size_t{types} * 4 + kSegmentsInFile * kSegmentEntrySize);
    typesCount_ = static_cast<int>(types);
    for (std::size_t i = 0; i < kSegmentsUsed; ++i) {
        const std::size_t entry = typeOffsets_ + std::size_t{types} * 4 + i * kSegmentEntrySize;
        const auto length = file.At<std::uint32_t>(entry + 4);
        segments_[i] = file.Part(length == 0 ? 0 : file.At<std::uint32_t>(entry), length);
    }
    if (types > segments_[kTypes].Size() / kTypeRecordSize) throw BadTypeLibrary("types without a record");
}

FileBytes TypeLibraryTables::TypeRecord(int type) const {
    const auto offset = file_.At<std::uint32_t>(typeOffsets_ + static_cast<std::size_t>(type) * 4);
    return At(kTypes, offset, kTypeRecordSize);
}

std::string TypeLibraryTables::Name(std::int32_t offset) const {
    if (offset < 0) return {};
    const auto at = static_cast<std::size_t>(offset);
    return segments_[kNames].Text(at + 12, segments_[kNames].At<std::uint8_t>(at + 8));
}

std::string TypeLibraryTables::Text(std::int32_t offset) const {
    if (offset < 0) return {};
    const auto at = static_cast<std::size_t>(offset);
    return segments_[kTexts].Text(at + 2, segments_[kTexts].At<std::uint16_t>(at));
}

GUID TypeLibraryTables::Identifier(std::int32_t offset) const {
    return offset < 0 ? GUID_NULL : segments_[kIdentifiers].At<GUID>(static_cast<std::size_t>(offset));
}

GUID TypeLibraryTables::TypeIdentifier(std::uint32_t reference) const {
    if (!IsImported(reference)) {
        return Identifier(At(kTypes, reference, kTypeRecordSize).At<std::int32_t>(0x2C));
    }
    constexpr std::uint32_t kByIdentifier = 0x10000;
    const FileBytes record = At(kImports, reference & ~3U, 12);
    return (record.At<std::uint32_t>(0) & kByIdentifier) != 0 ? Identifier(record.At<std::int32_t>(8))
                                                              : GUID_NULL;
}

std::string TypeLibraryTables::TypeName(std::uint32_t reference) const {
    if (!IsImported(reference)) return Name(At(kTypes, reference, kTypeRecordSize).At<std::int32_t>(0x34));
    // The name stands in the other library; the one import that every library has is known by its identifier.
    return TypeIdentifier(reference) == IID_IUnknown ? "IUnknown" : "imported type";
}

FileBytes TypeLibraryTables::ImplementedRecord(std::int32_t offset) const {
    if (offset < 0) throw BadTypeLibrary("a class has fewer interfaces than it counts");
    return At(kReferences, static_cast<std::size_t>(offset), 16);
}

std::string TypeLibraryTables::Spelling(std::int32_t value, int depth) const {
    if (value < 0) return SimpleSpelling(value & 0xFFF);
    if (depth < 0) throw BadTypeLibrary("a type with too many levels of pointers");
    const FileBytes description = At(kDescriptions, static_cast<std::size_t>(value), 8);
    switch (const int kind = description.At<std::uint16_t>(0)) {
        case kPointer:
            return Spelling(description.At<std::int32_t>(4), depth - 1) + "*";
        case kNamedType:
            return TypeName(description.At<std::uint32_t>(4));
        default:
            return SimpleSpelling(kind);
    }
}

}  // namespace larynth
