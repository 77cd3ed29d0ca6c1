// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>

#include <larynth/Base.h>

namespace larynth {

/// What a type library's bytes cannot say.
struct BadTypeLibrary : std::runtime_error {
    using std::runtime_error::runtime_error;
};

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

}  // namespace larynth
