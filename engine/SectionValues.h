// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace larynth {

/// Coefficients of a second-order section, see Resonator and AntiResonator.
struct SectionCoefficients {
    double A = 0.0, B = 0.0, C = 0.0;
};

/// A second-order section as plain numbers, for code that runs many of them at once.
struct SectionValues {
    double A, B, C;
    double state1 = 0.0, state2 = 0.0;  ///< The last signal value and the one before: outputs of a resonator,
                                        ///< inputs of an antiresonator.
};

/// Sets each section's coefficients from the place of the same number.
template <class Section>
void SetSections(std::span<Section> sections, std::span<const SectionCoefficients> coefficients) {
    const std::size_t count = std::min(sections.size(), coefficients.size());
    for (std::size_t i = 0; i < count; ++i) {
        const auto [A, B, C] = coefficients[i];
        sections[i].SetABC(A, B, C);
    }
}

}  // namespace larynth
