// SPDX-License-Identifier: MIT
/// What a type library says; the fields are those of the public description in <larynth/TypeLibrary.h>.
#pragma once

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include <larynth/Base.h>

namespace larynth {

/// What a type library's bytes cannot say.
struct BadTypeLibrary : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct DescribedParameter {
    std::string Name;
    std::string Type;
    LONG Direction;
};

struct DescribedFunction {
    std::string Name;
    int Slot;
    std::string ReturnType;
    std::vector<DescribedParameter> Parameters;
};

struct ImplementedInterface {
    std::string Name;
    GUID Id;
    LONG Flags;
};

struct DescribedType {
    LONG Kind;
    std::string Name;
    std::string HelpString;
    GUID Id;
    std::string Base;
    std::vector<DescribedFunction> Functions;
    std::vector<ImplementedInterface> Interfaces;
};

struct TypeLibraryContents {
    std::string Name;
    std::string HelpString;
    GUID Id;
    LONG MajorVersion;
    LONG MinorVersion;
    LONG Locale;
    std::vector<DescribedType> Types;
};

/// What the bytes of a ".tlb" file describe; BadTypeLibrary for bytes that are no such file. The fields of
/// records and the constants of enumerations are not read.
TypeLibraryContents ReadTypeLibrary(std::span<const std::byte> bytes);

}  // namespace larynth
