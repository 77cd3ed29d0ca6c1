// SPDX-License-Identifier: MIT
/// The exception of a failed component call, and the two checks that raise it or its base.
///
/// Inside a method failures travel as exceptions; at the interface boundary they become status codes. The
/// texts and the source line serve a debugger: they never leave the module.
#pragma once

#include <larynth/Base.h>

#include "engine/Exception.h"

namespace Zelvani {

/// Carries the status code that the interface boundary returns.
class ComException : public Exception {
  public:
    ComException(HRESULT hr, const char* condition, const char* message, const char* file, int line) noexcept
        : Exception(condition, message, file, line), hr_(hr) {}

    const char* what() const noexcept override { return "COM Exception"; }
    HRESULT Code() const noexcept { return hr_; }

  private:
    HRESULT hr_;
};

inline constexpr const char* kNullPointerCondition = "null pointer has been used";
inline constexpr const char* kFailedCallCondition = "COM interface call is failed";

/// Raises Exception for a null pointer. That is a fault of the caller's: it becomes E_FAIL.
inline void CheckPointer(const void* pointer, const char* condition = nullptr,
                         const char* message = nullptr) {
    if (pointer == nullptr)
        throw Exception(condition != nullptr ? condition : kNullPointerCondition, message, "", 0);
}

/// Raises ComException with a failing code; every non-negative code passes.
inline void CheckResult(HRESULT hr, const char* condition = nullptr, const char* message = nullptr,
                        const char* file = nullptr, int line = 0) {
    if (FAILED(hr))
        throw ComException(hr, condition != nullptr ? condition : kFailedCallCondition, message, file, line);
}

}  // namespace Zelvani
