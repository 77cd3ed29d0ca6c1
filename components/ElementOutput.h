// SPDX-License-Identifier: MIT
/// How a component hands out the samples of its engine element.
#pragma once

#include "com/OutPointer.h"
#include "engine/Component.h"

namespace larynth {

/// The end of every CalculateNext: null is allowed, and nothing else is probed, because this runs once per
/// sample.
inline HRESULT WriteSample(double y, double* pdValue) noexcept {
    if (pdValue != nullptr) *pdValue = y;
    return S_OK;
}

/// The whole of every GetOutputValue: the cached sample, E_FAIL before the first one, E_POINTER.
inline HRESULT PutOutput(const Component& element, double* pdValue) noexcept {
    return element.IsValid() ? Put(pdValue, element.Output()) : E_FAIL;
}

}  // namespace larynth
