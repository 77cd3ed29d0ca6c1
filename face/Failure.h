// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
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

/// Does `work`; a failure says in which frame it is.
template <class Work>
void InFrame(std::size_t number, Work work) {
    const auto place = [number] { return "frame " + std::to_string(number) + ": "; };
    try {
        work();
    } catch (const InputError& error) {
        throw InputError(place() + error.what());
    } catch (const Error& error) {
        throw Error(error.Status(), place() + error.what());
    }
}

}  // namespace larynth
