// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

#include "engine/Component.h"
#include "engine/Frame.h"

namespace larynth {

/// The phase (s) of a pitch period of length T0 one sample time T behind `t`: past its end the next one
/// begins.
inline double NextPhase(double t, double T, double T0) {
    t = t + T;
    if (t > T0) t = 0.0;
    return t;
}

/// What the length of a pitch period decides.
struct GlottalPeriod {
    double T0 = 0.01;   ///< s
    double Tp = 0.005;  ///< s, the open phase: OQ·T0.
    double K = 0.0;     ///< Normaliser of the pulse; 0: silent until parameters arrive.

    /// The period of F0 (Hz), 0 for F0 = 0.
    static GlottalPeriod OfF0(double F0, double OQ) { return OfT0(F0 == 0.0 ? 0.0 : 1.0 / F0, OQ); }
    static GlottalPeriod OfT0(double T0, double OQ);
};

/// The pulse of a period at `tau` seconds behind its beginning; 0 while the glottis is closed.
inline double GlottalPulse(double AV, const GlottalPeriod& period, double tau) {
    const double open = AV * period.K * (2.0 * tau - 3.0 * (tau * tau) / period.Tp);
    return tau <= period.Tp ? open : 0.0;
}

/// The place of the second pulse's time when the period stands at `t` (s).
inline double SecondPulseTime(double t, const GlottalPeriod& period, double OQ, double DI) {
    const double later = t + (1.0 - OQ) * DI * period.T0;
    return later > period.T0 ? later - period.T0 : later;
}

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
    static constexpr Frame::Sections kSections = Frame::Sections::None;

    void Take(const Frame& frame) {
        SetSampleTime(1.0 / frame.SampleFreq());
        SetParams(frame.F0, frame.AV, frame.OQ, frame.DI);
    }

    /// Sample time in seconds; to be set before the first sample.
    void SetSampleTime(double T) { T_ = T; }

    /// Sets the period to 1/F0 (Hz), or 0 for F0 = 0.
    void SetPeriodFromF0(double F0);

    void SetAV(double AV) { AV_ = AV; }  ///< Linear amplitude.
    void SetOQ(double OQ);               ///< Open phase as a fraction of the period.
    void SetDI(double DI) { DI_ = DI; }  ///< Diplophonia; no second pulse unless above 0.

    /// Sets the whole frame; flutter arrives through SetPeriodFromF0. F0 = 0 (or NaN) stops the period and
    /// silences the source.
    void SetParams(double F0, double AV, double OQ, double DI);

    /// The next sample starts a period afresh.
    void RestartPeriod() { t_ = 0.0; }

    /// Advances by one sample and caches it.
    double Evaluate();

    /// True when AV or OQ makes every sample 0.
    bool IsSilent() const { return AV_ == 0.0 || OQ_ == 0.0; }

    double SampleTime() const { return T_; }
    double AV() const { return AV_; }
    double OQ() const { return OQ_; }
    double DI() const { return DI_; }

    /// The period in force and the time since it began (s), for code that makes many samples at once; that
    /// code leaves here what the last of its samples would have left.
    GlottalPeriod& Period() { return period_; }
    double& Phase() { return t_; }

  private:
    double SampleNow() const;

    double T_ = 0.0;  // s
    double AV_ = 100.0, OQ_ = 0.5, DI_ = 0.0;
    GlottalPeriod period_;
    double t_ = 0.0;  // s, since the period began
};

inline GlottalPeriod GlottalPeriod::OfT0(double T0, double OQ) {
    // Energy of 2τ − 3τ²/Tp over the open phase is (2/15)·Tp³.
    constexpr double kPulseEnergy = 0.13333333333333333;
    const double Tp = OQ * T0;
    const double K = 15.0 * T0 / std::sqrt(kPulseEnergy * (Tp * Tp * Tp));
    return {T0, Tp, Tp == 0.0 ? 0.0 : K};
}

inline double VoicingSourceCore::Evaluate() {
    t_ = NextPhase(t_, T_, period_.T0);
    return Store(SampleNow());
}

inline double VoicingSourceCore::SampleNow() const {
    if (IsSilent() || period_.T0 == 0.0) return 0.0;
    double y = GlottalPulse(AV_, period_, t_);
    if (DI_ > 0.0) y = y + (1.0 - DI_) * GlottalPulse(AV_, period_, SecondPulseTime(t_, period_, OQ_, DI_));
    return y;
}

}  // namespace larynth
