// SPDX-License-Identifier: MIT
/// How a module carries files where the system has no resources.
#pragma once

#include <cstddef>
#include <cstring>
#include <optional>
#include <span>

#include <larynth/Base.h>

namespace larynth {

/// A row of a module's resource table. The bytes live as long as the module is in memory; a text has no
/// terminating zero.
struct Resource {
    LPCSTR type;  ///< "REGISTRY" for a class's registry script, "TYPELIB" for a type library.
    LONG number;  ///< Unique within its type.
    ULONG size;   ///< Bytes, at least 1.
    const void* data;
};

/// The resource of that type and number, if the table has it. `table` ends with a row without type.
inline std::optional<std::span<const std::byte>> FindInTable(const Resource* table, LPCSTR type,
                                                             LONG number) {
    for (const Resource* row = table; row->type != nullptr; ++row) {
        if (row->number != number || std::strcmp(row->type, type) != 0) continue;
        return std::span(static_cast<const std::byte*>(row->data), row->size);
    }
    return std::nullopt;
}

}  // namespace larynth

/// The module's own table, which it exports under this name; larynth_embed_resources() in the build defines
/// it.
extern "C" __attribute__((visibility("default"))) const larynth::Resource LarynthResources[];
