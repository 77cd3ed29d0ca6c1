// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "engine/Frame.h"

namespace larynth {

class KlattPacketData;
struct ResonatorGroup;

/// What a front end thinks in: centre frequency and bandwidth (Hz), linear gain at 0 Hz.
struct FrequencyForm {
    double F = 0.0, BW = 0.0, G = 1.0;
};

/// One section of a packet in two forms (Klatt 1980): a resonator y[n] = A·x[n] + B·y[n−1] + C·y[n−2], or an
/// antiresonator y[n] = A·x[n] + B·x[n−1] + C·x[n−2], the reciprocal of the resonator with the same F and BW,
/// times G.
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
    ResonatorEntry() = default;
    ResonatorEntry(const ResonatorEntry&) = delete;
    ResonatorEntry& operator=(const ResonatorEntry&) = delete;

    /// Tells the entry where it sits: done once, by the packet that it is a part of.
    void Attach(KlattPacketData& owner, const ResonatorGroup& group, int position,
                SectionCoefficients& abc) noexcept;

    /// Takes over frequencies, user state and which form is current; the coefficients lie in the packet's
    /// frame.
    void CopyFrom(const ResonatorEntry& source) noexcept;

    void SetABC(const SectionCoefficients& abc) noexcept;

    /// Sets one value (`&FrequencyForm::BW`); the other two of its form keep what they hold, stale or not.
    void Set(double FrequencyForm::*value, double dValue) noexcept;
    void Set(double SectionCoefficients::*value, double dValue) noexcept;

    /// One value of a form, which is computed if it is stale.
    double Get(double FrequencyForm::*value) noexcept;
    double Get(double SectionCoefficients::*value) noexcept;

    /// Brings the coefficients of entries of one packet up to date.
    static void UpdateABC(std::span<ResonatorEntry> entries) noexcept;

    /// Storage of the item `k`: 0 F, 1 BW, 2 G; as it stands, whichever form is current. Writing to it tells
    /// nobody.
    double& Item(int k) noexcept;

    /// ID of the item `k`.
    int ItemID(int k) const noexcept;

    int UnitCode() const noexcept;
    int Position() const noexcept { return position_; }  ///< 0-based place in its group.

    int userState = 0;  ///< A number kept for the client; it has no meaning here.

  private:
    enum class Current { FB, ABC, Both };

    void Written(Current form) noexcept;
    void UpdateFB() noexcept;
    bool NeedsABC() const noexcept { return current_ == Current::FB; }
    bool IsAntiResonator() const noexcept;

    Current current_ = Current::FB;
    FrequencyForm fb_;
    SectionCoefficients* abc_ = nullptr;  // in the packet's frame
    KlattPacketData* owner_ = nullptr;
    const ResonatorGroup* group_ = nullptr;
    int position_ = 0;
};

}  // namespace larynth
