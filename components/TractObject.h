// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include <larynth/ComPtr.h>
#include <larynth/Tracts.h>

#include "com/ComObject.h"
#include "components/ElementOutput.h"
#include "engine/Frame.h"

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

/// Hands the coefficients of `count` sections from the packet's views to `set` (index, coefficients), in
/// index order. `getView` is the packet's GetResonator or GetAntiResonator: (index, out-pointer, identifier).
///
/// Raises the code of the first failing call, E_FAIL for a view that is null; sections before it keep what
/// they were given. The result is the success code of the last GetC.
template <class View>
HRESULT SetSections(std::size_t count, auto&& getView, auto&& set) {
    HRESULT last = S_OK;
    for (std::size_t i = 0; i < count; ++i) {
        IUnknown* answer = nullptr;
        Zelvani::CheckResult(getView(static_cast<int>(i), &answer, ComPtr<View>::Id()));
        Zelvani::CheckPointer(answer);
        const auto view = ComPtr<View>::Adopt(static_cast<View*>(answer));
        SectionCoefficients abc;
        Zelvani::CheckResult(view->GetA(&abc.A));
        Zelvani::CheckResult(view->GetB(&abc.B));
        Zelvani::CheckResult(last = view->GetC(&abc.C));
        set(i, abc);
    }
    return last;
}

}  // namespace larynth
