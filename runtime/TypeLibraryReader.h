// SPDX-License-Identifier: MIT
#pragma once

#include "runtime/FileBytes.h"
#include "runtime/TypeLibraryContents.h"

namespace larynth {

/// What the bytes of a ".tlb" file describe; BadTypeLibrary for bytes that are no such file. The fields of
/// records and the constants of enumerations are not read.
TypeLibraryContents ReadTypeLibrary(FileBytes file);

}  // namespace larynth
