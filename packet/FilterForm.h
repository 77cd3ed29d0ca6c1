// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

namespace larynth {

class KlattPacketData;

/// Coefficients of the product Π (1 + b[i]·z^−1 + c[i]·z^−2) of N factors, lowest power first.
template <std::size_t N>
constexpr std::array<double, 2 * N + 1> MultiplyQuadratics(const std::array<double, N>& b,
                                                           const std::array<double, N>& c) noexcept {
    std::array<double, 2 * N + 1> p{1.0};
    for (std::size_t i = 0; i < N; ++i) {
        // From the highest power down, so that the lower ones still are the product without this factor.
        for (std::size_t j = 2 * (i + 1); j >= 2; --j) p[j] += p[j - 2] * c[i] + p[j - 1] * b[i];
        p[1] += b[i];
    }
    return p;
}

/// Computes alpha and beta, the cascade tract as one rational filter, from the cascade's resonators and
/// antiresonator, and marks them valid. An antiresonator with A = 0 gives no numbers.
void ConvertToFilterForm(KlattPacketData& packet) noexcept;

}  // namespace larynth
