// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "engine/Frame.h"
#include "packet/ItemTable.h"

namespace larynth {

class KlattPacketData;

/// One section of a packet in two forms (Klatt 1980): a resonator y[n] = A·x[n] + B·y[n−1] + C·y[n−2], or an
/// antiresonator y[n] = A·x[n] + B·x[n−1] + C·x[n−2], the reciprocal of the resonator with the same F and BW,
/// times G. This is a way to it; the values lie in the packet.
///
/// The form that was written last is current; reading the other one computes it with the packet's sample time
/// and keeps it until the next write. Every write through a setter makes the packet's resonator data the
/// valid ones.
///
/// A resonator whose F or BW is not above 0 passes its input times G. So does one whose coefficients have no
/// pair of conjugate poles when its frequencies are read. An antiresonator with F exactly 0 passes its input,
/// whatever the gain, and is computed again at every read; its way back has no fallback: coefficients without
/// a pair of conjugate zeros give no numbers.
class ResonatorEntry {
  public:
    /// Leads to nothing; no method but the test may be called.
    ResonatorEntry() = default;
    ResonatorEntry(KlattPacketData& packet, const ResonatorGroup& group, int position) noexcept
        : packet_(&packet), group_(&group), position_(position) {}

    explicit operator bool() const noexcept { return packet_ != nullptr; }

    void SetABC(const SectionCoefficients& abc) const noexcept;

    /// Sets one value (`&FrequencyRows::BW`); the other two of its form keep what they hold, stale or not.
    void Set(SectionRow FrequencyRows::*row, double dValue) const noexcept;
    void Set(SectionRow CoefficientRows::*row, double dValue) const noexcept;

    /// One value of a form, which is computed if it is stale.
    double Get(SectionRow FrequencyRows::*row) const noexcept;
    double Get(SectionRow CoefficientRows::*row) const noexcept;

    /// A number kept for the client; it has no meaning here.
    int& UserState() const noexcept;

    /// ID of the item `k`: 0 F, 1 BW, 2 G.
    int ItemID(int k) const noexcept { return UnitCode() + kValuesPerEntry * position_ + k; }

    int UnitCode() const noexcept { return group_->unitCode; }
    int Position() const noexcept { return position_; }  ///< 0-based place in its group.

  private:
    std::size_t Place() const noexcept {
        return static_cast<std::size_t>(group_->firstEntry) + static_cast<std::size_t>(position_);
    }
    unsigned Bit() const noexcept { return 1U << Place(); }
    void UpdateFB() const noexcept;

    KlattPacketData* packet_ = nullptr;
    const ResonatorGroup* group_ = nullptr;
    int position_ = 0;
};

}  // namespace larynth
