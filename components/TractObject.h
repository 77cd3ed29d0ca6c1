// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Tracts.h>

#include "com/ComObject.h"
#include "components/ElementOutput.h"

namespace larynth {

/// A tract as a component: an engine element behind the interfaces, the first of which is the role's. What a
/// packet gives the element is the class's own affair.
template <class Core, class Role, class... Others>
class TractObject : public ComObject<Role, Others...> {
  public:
    using RecognisedBy = Role;
    using ComObject<Role, Others...>::ComObject;

    HRESULT LARYNTH_CALL CalculateNext(double dInputValue, double* pdValue) noexcept final {
        return WriteSample(core_.Store(core_.Process(dInputValue)), pdValue);
    }
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept final { return PutOutput(core_, pdValue); }

    /// The element inside, for whoever recognised the object as this module's own.
    Core& Element() noexcept { return core_; }

  protected:
    Core core_;
};

}  // namespace larynth
