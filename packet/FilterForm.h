// SPDX-License-Identifier: MIT
/// The cascade tract of a packet as one rational filter.
#pragma once

#include <array>
#include <cstddef>

#include <larynth/Packet.h>

#include "packet/KlattPacketData.h"

namespace larynth {

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

class FilterFace : public PacketFace<ILarynthVocalTractFilterParams> {
  public:
    HRESULT LARYNTH_CALL GetAlphaDegree(int* pnDegree) noexcept override;
    HRESULT LARYNTH_CALL GetBetaDegree(int* pnDegree) noexcept override;
    HRESULT LARYNTH_CALL SetAlpha(int nIndex, double dValue) noexcept override;
    HRESULT LARYNTH_CALL GetAlpha(int nIndex, double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL SetBeta(int nIndex, double dValue) noexcept override;
    HRESULT LARYNTH_CALL GetBeta(int nIndex, double* pdValue) noexcept override;
    HRESULT LARYNTH_CALL ConvertFromFilter() noexcept override { return S_OK; }
    /// Computes alpha and beta from the cascade's resonators and antiresonator, and marks them valid. An
    /// antiresonator with A = 0 gives no numbers.
    HRESULT LARYNTH_CALL ConvertToFilter() noexcept override;
    HRESULT LARYNTH_CALL IsFilterDataValid(LONG* pbValid) noexcept override;
};

}  // namespace larynth
