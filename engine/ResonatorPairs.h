// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

#include "engine/Frame.h"
#include "engine/SectionValues.h"

namespace larynth {

/// Resonators that run together, two in a vector: what one of them computes of its states waits for no
/// other. Each makes the operations of a Resonator. New ones pass their input.
template <std::size_t kCount>
class ResonatorPairs {
  public:
    static constexpr std::size_t kPairs = (kCount + 1) / 2;

    ResonatorPairs() {
        for (std::size_t i = 0; i < kCount; ++i) Set(i, {1.0, 0.0, 0.0});
    }

    /// Sets the coefficients of resonator `i`; its state is kept.
    void Set(std::size_t i, const SectionCoefficients& abc) {
        Section<Double2>& pair = pairs_[i / 2];
        pair.A[i % 2] = abc.A;
        pair.B[i % 2] = abc.B;
        pair.C[i % 2] = abc.C;
    }

    /// The same for all of them, from `first` on; the states are kept.
    void Take(const CoefficientRows& rows, std::size_t first) {
        for (std::size_t i = 0; i < kCount; ++i) Set(i, rows.At(first + i));
    }

    /// One sample through all of them in series.
    double InSeries(double x) {
        std::array<Double2, kPairs> kept;
        for (std::size_t k = 0; k < kPairs; ++k) kept[k] = pairs_[k].Kept();
        for (std::size_t k = 0; k < kPairs; ++k) {
            const Double2 A = pairs_[k].A;
            const double first = kept[k][0] + A[0] * x;
            x = 2 * k + 1 < kCount ? kept[k][1] + A[1] * first : first;
            pairs_[k].Keep(Double2{first, x});
        }
        return x;
    }

    /// One sample through all of them side by side; their outputs are added to `sum` in their order.
    double SideBySide(double x, double sum) {
        const Double2 inputs{x, x};
        for (std::size_t k = 0; k < kPairs; ++k) {
            const Double2 y = pairs_[k].Resonate(inputs);
            sum = sum + y[0];
            if (2 * k + 1 < kCount) sum = sum + y[1];
        }
        return sum;
    }

    /// The pairs, in the order of the resonators; a last one without partner has a silent one.
    Section<Double2>* Pairs() { return pairs_.data(); }

    /// The last output of resonator `i`.
    double Output(std::size_t i) const { return pairs_[i / 2].state1[i % 2]; }

  private:
    std::array<Section<Double2>, kPairs> pairs_{};
};

}  // namespace larynth
