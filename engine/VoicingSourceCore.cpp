// SPDX-License-Identifier: MIT
#include "engine/VoicingSourceCore.h"

#include "engine/Constants.h"

namespace larynth {

void VoicingSourceCore::SetPeriodFromF0(double F0) { period_ = GlottalPeriod::OfF0(F0, OQ_); }

void VoicingSourceCore::SetOQ(double OQ) {
    OQ_ = OQ;
    period_ = GlottalPeriod::OfT0(period_.T0, OQ);
}

void VoicingSourceCore::SetParams(double F0, double AV, double OQ, double DI) {
    AV_ = AV;
    OQ_ = OQ;
    DI_ = DI;
    period_ = GlottalPeriod::OfT0(IsZeroOrNan(F0) ? 0.0 : 1.0 / F0, OQ);
}

}  // namespace larynth
