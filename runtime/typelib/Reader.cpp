// SPDX-License-Identifier: MIT
#include <cstdint>
#include <utility>

#include <larynth/TypeLibrary.h>

#include "runtime/typelib/Contents.h"
#include "runtime/typelib/Tables.h"

namespace larynth {

namespace {

/// Walks the records of types. Every member is counted with its block and with its record, so that a file
/// whose counts are wrong cannot make it read more than twice the file's size; and texts are counted, so that
/// one text cannot be that of every type.
class Walk {
  public:
    explicit Walk(const TypeLibraryTables& tables)
        : tables_(tables), unread_(2 * tables.File().Size()), texts_(tables.File().Size()) {}

    DescribedType Type(FileBytes record);

  private:
    std::vector<DescribedFunction> Functions(FileBytes type);
    DescribedFunction Function(FileBytes record, std::int32_t name) const;
    std::vector<ImplementedInterface> Interfaces(FileBytes type);
    void Account(std::size_t bytes) {
        if (bytes > unread_) throw BadTypeLibrary("the members of types overlap");
        unread_ -= bytes;
    }

    const TypeLibraryTables& tables_;
    std::size_t unread_;
    std::size_t texts_;  // bytes that the texts of the types to come may have
};

DescribedType Walk::Type(FileBytes record) {
    DescribedType type;
    type.Kind = record.At<std::uint8_t>(0) & 0xF;
    type.Name = tables_.Name(record.At<std::int32_t>(0x34));
    type.HelpString = tables_.Text(record.At<std::int32_t>(0x3C));
    if (type.HelpString.size() > texts_) throw BadTypeLibrary("the texts of types overlap");
    texts_ -= type.HelpString.size();
    type.Id = tables_.Identifier(record.At<std::int32_t>(0x2C));
    type.Functions = Functions(record);
    if (type.Kind == TKIND_COCLASS) type.Interfaces = Interfaces(record);
    if (type.Kind == TKIND_INTERFACE) {
        const auto base = record.At<std::int32_t>(0x54);
        if (base >= 0) type.Base = tables_.TypeName(static_cast<std::uint32_t>(base));
    }
    return type;
}

/// The members of a type: their size in bytes, one record for each, then their numbers, names and records'
/// offsets.
std::vector<DescribedFunction> Walk::Functions(FileBytes type) {
    std::vector<DescribedFunction> functions;
    const std::size_t count = type.At<std::uint16_t>(0x18);
    const std::size_t members = count + type.At<std::uint16_t>(0x1A);
    if (count == 0) return functions;
    const std::size_t start = type.At<std::uint32_t>(4);
    const std::size_t size = tables_.File().At<std::uint32_t>(start);
    Account(size + 4 + members * 12);
    const FileBytes records = tables_.File().Part(start + 4, size);
    const FileBytes names = tables_.File().Part(start + 4 + size + members * 4, members * 4);
    const FileBytes offsets = tables_.File().Part(start + 4 + size + members * 8, members * 4);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = offsets.At<std::uint32_t>(i * 4);
        const FileBytes record = records.Part(at, records.At<std::uint16_t>(at));
        Account(record.Size());
        functions.push_back(Function(record, names.At<std::int32_t>(i * 4)));
    }
    return functions;
}

DescribedFunction Walk::Function(FileBytes record, std::int32_t name) const {
    constexpr std::size_t kFixedPart = 0x18;
    constexpr std::size_t kParameterSize = 12;
    DescribedFunction function;
    function.Name = tables_.Name(name);
    function.Slot = (record.At<std::uint16_t>(12) & ~3) / tables_.SlotSize();
    function.ReturnType = tables_.Spelling(record.At<std::int32_t>(4));
    const std::size_t count = record.At<std::uint16_t>(20);
    if (record.Size() < kFixedPart + count * kParameterSize)
        throw BadTypeLibrary("a method with too short a record");
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = record.Size() - (count - i) * kParameterSize;
        function.Parameters.push_back({tables_.Name(record.At<std::int32_t>(at + 4)),
                                       tables_.Spelling(record.At<std::int32_t>(at)),
                                       record.At<std::int32_t>(at + 8) & (PARAMFLAG_IN | PARAMFLAG_OUT)});
    }
    return function;
}

std::vector<ImplementedInterface> Walk::Interfaces(FileBytes type) {
    std::vector<ImplementedInterface> interfaces;
    auto next = type.At<std::int32_t>(0x54);
    for (int left = type.At<std::uint16_t>(0x4C); left > 0; --left) {
        const FileBytes record = tables_.ImplementedRecord(next);
        Account(record.Size());
        const auto reference = record.At<std::uint32_t>(0);
        interfaces.push_back({tables_.TypeName(reference), tables_.TypeIdentifier(reference),
                              record.At<std::int32_t>(4) & IMPLTYPEFLAG_DEFAULT});
        next = record.At<std::int32_t>(12);
    }
    return interfaces;
}

}  // namespace

TypeLibraryContents ReadTypeLibrary(std::span<const std::byte> bytes) {
    const FileBytes file(bytes);
    const TypeLibraryTables tables(file);
    TypeLibraryContents library;
    library.Name = tables.Name(file.At<std::int32_t>(0x38));
    library.HelpString = tables.Text(file.At<std::int32_t>(0x24));
    library.Id = tables.Identifier(file.At<std::int32_t>(0x08));
    library.MajorVersion = file.At<std::uint16_t>(0x18);
    library.MinorVersion = file.At<std::uint16_t>(0x1A);
    library.Locale = file.At<std::int32_t>(0x10);
    Walk walk(tables);
    for (int i = 0; i < tables.TypesCount(); ++i) library.Types.push_back(walk.Type(tables.TypeRecord(i)));
    return library;
}

}  // namespace larynth
