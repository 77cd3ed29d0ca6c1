// SPDX-License-Identifier: MIT
#include "host/command/ExitStatus.h"

#include <CLI/Error.hpp>
#include <cstdio>
#include <exception>
#include <new>

#include <larynth/Speech.h>

#include "host/command/Terminal.h"
#include "input/BadInput.h"

namespace larynth {
namespace {

ExitStatus Report(ExitStatus status, const std::exception& error) {
    Say(error.what());
    return status;
}

}  // namespace

ExitStatus StatusOf(const std::function<void()>& work) try {
    work();
    return kDone;
} catch (const CLI::ParseError& error) {
    return Report(kBadInput, error);
} catch (const BadInput& error) {
    return Report(kBadInput, error);
} catch (const InputError& error) {
    return Report(kBadInput, error);
} catch (const std::bad_alloc&) {
    std::fputs("larynth: out of memory\n", stderr);
    return kFailed;
} catch (const std::exception& error) {
    return Report(kFailed, error);
}

}  // namespace larynth
