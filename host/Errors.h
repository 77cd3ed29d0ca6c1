// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

#include <larynth/Base.h>

namespace larynth {

/// The user's arguments or input cannot be used; everything else that goes wrong is a failure while working.
class BadInput : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A component call that failed: what could not be done, and the status code.
class ComponentFailure : public std::runtime_error {
  public:
    ComponentFailure(HRESULT hr, const std::string& what);

    HRESULT Code() const noexcept { return hr_; }

  private:
    HRESULT hr_;
};

/// Raises ComponentFailure for a failing code; `what` completes the sentence "cannot …".
void Require(HRESULT hr, const char* what);

}  // namespace larynth
