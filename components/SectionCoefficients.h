// SPDX-License-Identifier: MIT
/// How a packet's views of resonators and antiresonators reach the sections of a tract.
#pragma once

#include <cstddef>
#include <span>

#include <larynth/ComPtr.h>

namespace larynth {

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
