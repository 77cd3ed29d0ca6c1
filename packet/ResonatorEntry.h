// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "packet/PolePosition.h"

namespace larynth {

class KlattPacketData;

/// What a front end thinks in: centre frequency and bandwidth (Hz), linear gain at 0 Hz.
struct FrequencyForm {
    double F = 0.0, BW = 0.0, G = 1.0;
};

/// What the engine runs: the coefficients of the second-order difference equation.
struct CoefficientForm {
    double A = 0.0, B = 0.0, C = 0.0;
};

/// One resonator of a packet, y[n] = A·x[n] + B·y[n−1] + C·y[n−2], in two forms (Klatt 1980).
///
/// The form that was written last is current; reading the other one computes it with the owner's sample time
/// and keeps it until the next write. Every write through a setter makes the owner's resonator data the valid
/// ones.
class ResonatorEntry {
  public:
    ResonatorEntry() = default;
    ResonatorEntry(const ResonatorEntry&) = delete;
    ResonatorEntry& operator=(const ResonatorEntry&) = delete;
    virtual ~ResonatorEntry() = default;

    /// Tells the entry where it sits. The owner is not owned and outlives it.
    void Attach(KlattPacketData& owner, int unitCode, int position) noexcept;

    /// Takes over everything but the owner.
    void CopyFrom(const ResonatorEntry& source) noexcept;

    void SetFB(const FrequencyForm& fb) noexcept;
    void SetABC(const CoefficientForm& abc) noexcept;

    /// Sets one value (`&FrequencyForm::BW`); the other two of its form keep what they hold, stale or not.
    void Set(double FrequencyForm::*value, double dValue) noexcept;
    void Set(double CoefficientForm::*value, double dValue) noexcept;

    /// The form, computed if it is stale; null when it cannot be computed because the entry has no owner.
    const FrequencyForm* FB() noexcept;
    const CoefficientForm* ABC() noexcept {
        PolePosition fresh;
        return ABC(fresh);
    }
    /// The same for a reader that keeps the functions of the last frame's entry at this place.
    const CoefficientForm* ABC(PolePosition& kept) noexcept {
        return current_ != Current::FB ? &abc_ : ComputedABC(kept);
    }

    /// One value of a form; nothing when the form cannot be computed.
    std::optional<double> Get(double FrequencyForm::*value) noexcept;
    std::optional<double> Get(double CoefficientForm::*value) noexcept;

    /// Storage of the item `k`: 0 F, 1 BW, 2 G; as it stands, whichever form is current. Writing to it tells
    /// nobody.
    double& Item(int k) noexcept;

    /// ID of the item `k`.
    int ItemID(int k) const noexcept;

    /// A number kept for the client; it has no meaning here.
    int UserState() const noexcept { return userState_; }
    void SetUserState(int nState) noexcept { userState_ = nState; }

    int UnitCode() const noexcept { return unitCode_; }
    int Position() const noexcept { return position_; }

  protected:
    /// Conversions with sample time T (s); on success both forms are current.
    virtual void FBToABC(double T, PolePosition& position) noexcept;
    virtual void ABCToFB(double T) noexcept;

    enum class Current : int { FB = 0, ABC = 1, Both = 2 };

    Current current_ = Current::FB;
    FrequencyForm fb_;
    CoefficientForm abc_;

  private:
    const CoefficientForm* ComputedABC(PolePosition& position) noexcept;
    void Written(Current form) noexcept;

    int userState_ = 0;
    KlattPacketData* owner_ = nullptr;
    int position_ = 0;  // 0-based place in its group
    int unitCode_ = 0;
};

}  // namespace larynth
