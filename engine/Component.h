// SPDX-License-Identifier: MIT
#pragma once

namespace larynth {

/// A signal element: produces one sample per call and remembers the last one.
///
/// Elements are value types; a copy takes coefficients, state and cached output with it. One thread at a
/// time.
class Component {
  public:
    virtual ~Component() = default;

    /// The element's sample. With `recompute` false a valid cached sample may be returned instead of a new
    /// one.
    virtual double Evaluate(bool recompute) = 0;

    /// Declares the cached output stale; its value stays.
    virtual void Invalidate() { valid_ = false; }

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
    Component(const Component&) = default;
    Component& operator=(const Component&) = default;

  private:
    bool valid_ = false;
    double output_ = 0.0;
};

}  // namespace larynth
