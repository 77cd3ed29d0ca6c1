// SPDX-License-Identifier: MIT
#pragma once

#include <new>
#include <stdexcept>
#include <string>

#include <larynth/Base.h>

namespace larynth {

/// What the body of a runtime function raises to fail with a status code and a text for LarynthLastError().
/// An empty text leaves the one of an earlier failure.
class Failure : public std::runtime_error {
  public:
    explicit Failure(HRESULT code, const std::string& text = {}) : std::runtime_error(text), code_(code) {}

    HRESULT Code() const noexcept { return code_; }

  private:
    HRESULT code_;
};

/// Keeps a text (as of std::printf, cut to 511 bytes) for the calling thread's LarynthLastError() and returns
/// `code`.
[[gnu::format(printf, 2, 3)]] HRESULT Fail(HRESULT code, const char* format, ...) noexcept;

/// Runs the body of a runtime function: no exception leaves. A Failure's code, E_OUTOFMEMORY, or E_FAIL for
/// what a foreign class object let through.
template <class Body>
HRESULT Contained(Body&& body) noexcept {
    try {
        return body();
    } catch (const Failure& failure) {
        return *failure.what() != '\0' ? Fail(failure.Code(), "%s", failure.what()) : failure.Code();
    } catch (const std::bad_alloc&) {
        return Fail(E_OUTOFMEMORY, "out of memory");
    } catch (...) {
        return Fail(E_FAIL, "an exception left a class object or a module");
    }
}

}  // namespace larynth
