// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

#include <larynth/Base.h>

#include "runtime/typelib/Contents.h"

namespace larynth {

/// Bytes of a little-endian file, from which nothing outside can be read: BadTypeLibrary is raised instead.
class FileBytes {
  public:
    explicit FileBytes(std::span<const std::byte> bytes) : bytes_(bytes) {}

    std::size_t Size() const { return bytes_.size(); }

    /// The `length` bytes at `offset`.
    FileBytes Part(std::size_t offset, std::size_t length) const {
        if (offset > bytes_.size() || length > bytes_.size() - offset) {
            throw BadTypeLibrary(std::to_string(length) + " bytes at offset " + std::to_string(offset) +
                                 " reach beyond the " + std::to_string(bytes_.size()) + " that there are");
        }
        return FileBytes(bytes_.subspan(offset, length));
    }

    /// An integer or a GUID.
    template <class Value>
    Value At(std::size_t offset) const {
        static_assert(std::endian::native == std::endian::little);
        Value value;
        std::memcpy(&value, Part(offset, sizeof(Value)).bytes_.data(), sizeof(Value));
        return value;
    }

    std::string Text(std::size_t offset, std::size_t length) const {
        const std::span<const std::byte> text = Part(offset, length).bytes_;
        return {reinterpret_cast<const char*>(text.data()), text.size()};
    }

  private:
    std::span<const std::byte> bytes_;
};

/// The tables of a type library file that its descriptions refer to: names, texts, identifiers, type records
/// and spelled types. The file is the platform of origin's format "MSFT": a header, an offset per type, then
/// segments; a reference is an offset within the segment that is meant, a negative one stands for "none".
class TypeLibraryTables {
  public:
    /// A record of the segment of types; references to types are multiples of it.
    static constexpr std::uint32_t kTypeRecordSize = 0x64;

    /// BadTypeLibrary, as in all functions, for bytes that are no such file.
    explicit TypeLibraryTables(FileBytes file);

    FileBytes File() const { return file_; }
    int TypesCount() const { return typesCount_; }
    FileBytes TypeRecord(int type) const;

    /// Bytes from one slot of a method table to the next.
    int SlotSize() const { return slotSize_; }

    std::string Name(std::int32_t offset) const;
    std::string Text(std::int32_t offset) const;
    GUID Identifier(std::int32_t offset) const;

    /// A type of this library or an imported one.
    std::string TypeName(std::uint32_t reference) const;
    GUID TypeIdentifier(std::uint32_t reference) const;

    /// The record of a class's interface at `offset` in the segment of references.
    FileBytes ImplementedRecord(std::int32_t offset) const;

    /// A type value as the interface description language writes it, such as "double*". At most eight levels
    /// of pointers.
    std::string Spelling(std::int32_t value) const { return Spelling(value, 8); }

  private:
    enum Segment {
        kTypes,
        kImports,
        kImportFiles,
        kReferences,
        kIdentifierHash,
        kIdentifiers,
        kNameHash,
        kNames,
        kTexts,
        kDescriptions,
        kSegmentsUsed
    };

    FileBytes At(Segment segment, std::size_t offset, std::size_t length) const {
        return segments_[segment].Part(offset, length);
    }
    std::string Spelling(std::int32_t value, int depth) const;

    FileBytes file_;
    int typesCount_ = 0;
    int slotSize_ = 0;
    std::size_t typeOffsets_ = 0;  // where in the file the offsets of the type records are
    std::array<FileBytes, kSegmentsUsed> segments_;
};

}  // namespace larynth
