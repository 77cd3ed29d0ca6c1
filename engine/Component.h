// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// A signal element: produces one sample per call and can remember the last one.
///
/// Elements are value types; a copy takes coefficients, state and cached output with it. One thread at a
/// time.
class Component {
  public:
    /// Caches `y` as the last output, marks it valid and returns it.
    double Store(double y) {
        output_ = y;
        valid_ = true;
        return y;
    }

    bool IsValid() const { return valid_; }
    double Output() const { return output_; }

  protected:
    Component() = default;
    ~Component() = default;
    Component(const Component&) = default;
    Component& operator=(const Component&) = default;

  private:
    bool valid_ = false;
    double output_ = 0.0;
};

}  // namespace larynth
