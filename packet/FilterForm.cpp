// SPDX-License-Identifier: MIT
#include "packet/FilterForm.h"

#include "packet/KlattPacketData.h"

namespace larynth {

void ConvertToFilterForm(KlattPacketData& packet) noexcept {
    double gain = 1.0;  // the A of all sections, gathered into beta

    // A resonator is A / (1 − B·z^−1 − C·z^−2). Entries of a packet have an owner: their forms never fail.
    std::array<double, kCascadePoles.count> poleB, poleC;
    for (std::size_t i = 0; i < poleB.size(); ++i) {
        const auto [A, B, C] = *packet.cascadePoles[i].ABC();
        gain *= A;
        poleB[i] = -B;
        poleC[i] = -C;
    }

    // An antiresonator is A·(1 + (B/A)·z^−1 + (C/A)·z^−2).
    std::array<double, kCascadeZeros.count> zeroB, zeroC;
    for (std::size_t i = 0; i < zeroB.size(); ++i) {
        const auto [A, B, C] = *packet.cascadeZeros[i].ABC();
        gain *= A;
        zeroB[i] = B / A;
        zeroC[i] = C / A;
    }

    const auto den = MultiplyQuadratics(poleB, poleC);
    const auto num = MultiplyQuadratics(zeroB, zeroC);
    for (std::size_t k = 0; k < packet.alpha.size(); ++k) packet.alpha[k] = -den[k + 1];
    packet.beta[0] = gain;
    for (std::size_t k = 1; k < packet.beta.size(); ++k) packet.beta[k] = gain * num[k];
    packet.validity |= KlattPacketData::kFilterDataValid;
}

}  // namespace larynth
