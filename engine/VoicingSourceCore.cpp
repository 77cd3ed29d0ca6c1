// SPDX-License-Identifier: MIT
#include "engine/VoicingSourceCore.h"

#include <cmath>

#include "engine/Constants.h"

namespace larynth {

void VoicingSourceCore::SetPeriodFromF0(double F0) { SetPeriod(F0 == 0.0 ? 0.0 : 1.0 / F0); }

void VoicingSourceCore::SetOQ(double OQ) {
    OQ_ = OQ;
    UpdatePulse();
}

void VoicingSourceCore::SetParams(double F0, double AV, double OQ, double FL, double FLT, double DI) {
    F0_ = F0;
    AV_ = AV;
    OQ_ = OQ;
    FL_ = FL;
    FLT_ = FLT;
    DI_ = DI;
    SetPeriod(IsZeroOrNan(F0) ? 0.0 : 1.0 / F0);
}

void VoicingSourceCore::SetPeriod(double T0) {
    T0_ = T0;
    UpdatePulse();
}

void VoicingSourceCore::UpdatePulse() {
    // Energy of 2τ − 3τ²/Tp over the open phase is (2/15)·Tp³.
    constexpr double kPulseEnergy = 0.13333333333333333;
    Tp_ = OQ_ * T0_;
    K_ = Tp_ == 0.0 ? 0.0 : 15.0 * T0_ / std::sqrt(kPulseEnergy * (Tp_ * Tp_ * Tp_));
}

}  // namespace larynth
