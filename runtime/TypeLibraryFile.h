// SPDX-License-Identifier: MIT
#pragma once

#include "runtime/TypeLibraryContents.h"

namespace larynth {

/// Reads the library of a ".tlb" file or, for any other file, the one that the module carries as resource 1
/// of type "TYPELIB". Writes it and returns S_OK, or returns the codes of LarynthLoadTypeLibrary with the
/// reason kept for LarynthLastError(). Raises std::bad_alloc.
HRESULT LoadTypeLibraryFile(LPCSTR path, TypeLibraryContents& library);

}  // namespace larynth
