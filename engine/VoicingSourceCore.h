// SPDX-License-Identifier: MIT
#pragma once

#include "engine/Component.h"

namespace larynth {

/// Glottal flow derivative, one sample per Evaluate (polynomial pulse of Klatt's KLGLOTT88 kind).
///
/// Over the open phase Tp = OQ·T0 of each pitch period the pulse is AV·K·(2τ − 3τ²/Tp), the derivative of the
/// flow τ² − τ³/Tp; then the glottis is closed and the sample 0. K makes a pulse's energy (15·AV·T0)²
/// whatever the open quotient. Diplophonia adds a delayed, weaker second pulse per period.
///
/// The period ends on the first sample past T0 and restarts at exactly 0: pitch is quantised to whole
/// samples. Parameter changes keep the phase.
class VoicingSourceCore final : public Component {
  public:
    /// Sample time in seconds; to be set before the first sample.
    void SetSampleTime(double T) { T_ = T; }

    /// Sets the period to 1/F0 (Hz), or 0 for F0 = 0, and leaves the stored F0 alone.
    void SetPeriodFromF0(double F0);

    void SetAV(double AV) { AV_ = AV; }      ///< Linear amplitude.
    void SetOQ(double OQ);                   ///< Open phase as a fraction of the period.
    void SetFL(double FL) { FL_ = FL; }      ///< Stored only: flutter arrives through SetPeriodFromF0.
    void SetFLT(double FLT) { FLT_ = FLT; }  ///< Stored only.
    void SetDI(double DI) { DI_ = DI; }      ///< Diplophonia; no second pulse unless above 0.

    /// Sets the whole frame. F0 = 0 (or NaN) stops the period and silences the source.
    void SetParams(double F0, double AV, double OQ, double FL, double FLT, double DI);

    /// The next sample starts a period afresh.
    void RestartPeriod() { t_ = 0.0; }

    /// Advances by one sample. The phase moves on even where the cached sample is returned.
    double Evaluate(bool recompute) override;

    double F0() const { return F0_; }
    double FL() const { return FL_; }
    double FLT() const { return FLT_; }

  private:
    void SetPeriod(double T0);
    void UpdatePulse();
    double ComputeSample();
    double Pulse(double tau) const;

    double T_ = 0.0;     // s
    double F0_ = 100.0;  // Hz
    double AV_ = 100.0, OQ_ = 0.5, FL_ = 0.0, FLT_ = 5e-05, DI_ = 0.0;
    double T0_ = 0.01;   // s
    double Tp_ = 0.005;  // s, OQ·T0
    double K_ = 0.0;     // silent until parameters arrive
    double t_ = 0.0;     // s, since the period began
    double t2_ = 0.0;    // s, since the second pulse began
};

inline double VoicingSourceCore::Evaluate(bool recompute) {
    if (recompute) Invalidate();
    t_ = t_ + T_;
    if (t_ > T0_) t_ = 0.0;
    t2_ = t_ + (1.0 - OQ_) * DI_ * T0_;
    if (t2_ > T0_) t2_ = t2_ - T0_;
    return ComputeSample();
}

inline double VoicingSourceCore::ComputeSample() {
    if (IsValid()) return Output();
    if (AV_ == 0.0 || T0_ == 0.0 || OQ_ == 0.0) return Store(0.0);
    double y = Pulse(t_);
    if (DI_ > 0.0) y = y + (1.0 - DI_) * Pulse(t2_);
    return Store(y);
}

inline double VoicingSourceCore::Pulse(double tau) const {
    if (!(tau <= Tp_)) return 0.0;
    return AV_ * K_ * (2.0 * tau - 3.0 * (tau * tau) / Tp_);
}

}  // namespace larynth
