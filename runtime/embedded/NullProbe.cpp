// SPDX-License-Identifier: MIT
// The memory probes where nobody can be asked what is accessible, as in WebAssembly, where every address
// below the memory's end can be read and written: they find null alone.
#include <larynth/Runtime.h>

BOOL LARYNTH_CALL IsBadReadPtr(const void* pMemory, std::size_t nBytes) {
    return pMemory == nullptr && nBytes != 0 ? TRUE : FALSE;
}

BOOL LARYNTH_CALL IsBadWritePtr(void* pMemory, std::size_t nBytes) { return IsBadReadPtr(pMemory, nBytes); }
