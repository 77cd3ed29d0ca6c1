// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "packet/AntiResonatorEntry.h"
#include "packet/ItemTable.h"
#include "packet/ResonatorEntry.h"
#include "packet/TruPacket.h"

namespace larynth {

/// The stored values of one frame. All sizes are fixed, so that a packet is one block of memory and an item
/// is found by arithmetic.
class KlattPacketData {
  public:
    static constexpr double kDefaultSampleTime = 1.0 / 11025.0;  ///< s

    /// Bits of `validity`: which form of the cascade tract was written last. A conversion adds the filter's.
    static constexpr int kResonatorDataValid = 1;
    static constexpr int kFilterDataValid = 2;

    static constexpr std::size_t kAlphaCount = 2 * kCascadePoles.count;
    static constexpr std::size_t kBetaCount = 2 * kCascadeZeros.count + 1;

    KlattPacketData() noexcept;
    KlattPacketData(const KlattPacketData&) = delete;
    KlattPacketData& operator=(const KlattPacketData&) = delete;
    virtual ~KlattPacketData() = default;

    /// Takes over all values; the entries stay this packet's own. Without stored words in the source, this
    /// packet keeps those that it has.
    void CopyFrom(const KlattPacketData& source) noexcept;

    /// Storage of an item, as it stands; the index must be one.
    double& Item(int index) noexcept;
    double& Scalar(ScalarItem item) noexcept { return scalars[static_cast<std::size_t>(item)]; }

    /// Hz, by the way through the stored sample time: 1/(1/x) need not be x.
    double SampleFreq() const noexcept { return 1.0 / sampleTime; }

    std::array<double, kScalarCount> scalars{};  ///< In the order of ScalarItem.

    int validity = kResonatorDataValid;
    std::array<double, kAlphaCount> alpha{};  ///< alpha[k−1]: coefficient of y[n−k].
    std::array<double, kBetaCount> beta{};    ///< beta[k]: coefficient of x[n−k].
    std::array<ResonatorEntry, kCascadePoles.count> cascadePoles;
    std::array<AntiResonatorEntry, kCascadeZeros.count> cascadeZeros;

    std::array<ResonatorEntry, kParallelPoles.count> parallelPoles;

    double sampleTime = kDefaultSampleTime;  ///< s
    int frameLen = 0;                        ///< Samples.

    std::optional<TruWords> truWords;  ///< The 16-bit packet, once one was set.
};

}  // namespace larynth
