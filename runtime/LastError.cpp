// SPDX-License-Identifier: MIT
#include "runtime/LastError.h"

#include <cstdarg>
#include <cstdio>

#include <larynth/Runtime.h>

namespace larynth {

namespace {
// A plain buffer: nothing to allocate when memory is out, nothing to destroy when the thread ends.
constinit thread_local char lastError[512] = "";
}  // namespace

HRESULT Fail(HRESULT code, const char* format, ...) noexcept {
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(lastError, sizeof(lastError), format, values);
    va_end(values);
    return code;
}

}  // namespace larynth

LPCSTR LARYNTH_CALL LarynthLastError() { return larynth::lastError; }
