// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>

#include <larynth/ComPtr.h>
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

/// Sets every section from the packet's view of it, in index order. `getView` is the packet's GetResonator or
/// GetAntiResonator: (index, out-pointer, identifier).
///
/// Raises the code of the first failing call, E_FAIL for a view that is null; sections before it keep what
/// they were given. The result is the success code of the last GetC.
template <class View, class Section, class GetView>
HRESULT SetSections(std::span<Section> sections, GetView&& getView) {
    HRESULT last = S_OK;
    int index = 0;
    for (Section& section : sections) {
        IUnknown* answer = nullptr;
        Zelvani::CheckResult(getView(index++, &answer, ComPtr<View>::Id()));
        Zelvani::CheckPointer(answer);
        const auto view = ComPtr<View>::Adopt(static_cast<View*>(answer));
        double A = 0.0, B = 0.0, C = 0.0;
        Zelvani::CheckResult(view->GetA(&A));
        Zelvani::CheckResult(view->GetB(&B));
        Zelvani::CheckResult(last = view->GetC(&C));
        section.SetABC(A, B, C);
    }
    return last;
}

/// Sets one section directly; E_FAIL for an index outside.
template <class Section>
HRESULT SetSection(std::span<Section> sections, int nIndex, double A, double B, double C) noexcept {
    if (nIndex < 0 || nIndex >= static_cast<int>(sections.size())) return E_FAIL;
    sections[static_cast<std::size_t>(nIndex)].SetABC(A, B, C);
    return S_OK;
}

}  // namespace larynth
