// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <utility>

#include <larynth/Speech.h>

#include "input/BadInput.h"

namespace larynth {

/// What `work` gives; what it raises about a text that somebody wrote, or about a file, comes out as an
/// exception of the face.
template <class Work>
decltype(auto) Translated(Work work) try {
    return work();
} catch (const BadInput& error) {
    const TextPosition& where = error.Where();
    throw InputError(error.what(), where.file, where.line, where.column);
} catch (const Error&) {
    throw;
} catch (const std::runtime_error& error) {
    throw Error(E_FAIL, error.what());
}

}  // namespace larynth
