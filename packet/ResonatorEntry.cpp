// SPDX-License-Identifier: MIT
#include "packet/ResonatorEntry.h"

#include <cmath>

#include "engine/Constants.h"
#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "packet/KlattPacketData.h"

namespace larynth {

namespace {

struct FrequencyForm {
    double F, BW, G;
};

FrequencyForm ResonatorFB(const SectionCoefficients& abc, double T) noexcept {
    const auto [A, B, C] = abc;
    const double x = C < 0.0 ? B / (2.0 * std::sqrt(-C)) : 0.0;
    if (!(C < 0.0) || x > 1.0 || x < -1.0) return {0.0, 0.0, A};  // a plain gain is the nearest thing
    const double BW = -Logarithm(-C) / (kTwoPi10 * T);
    const double F = ArcCosine(x) / (kTwoPi10 * T);
    return {F, BW, A / (1.0 - B - C)};
}

FrequencyForm AntiResonatorFB(const SectionCoefficients& abc, double T) noexcept {
    const auto [A, B, C] = abc;
    const double m = C / A;
    const double b0 = -B / A;
    const double c0 = -m;
    const double BW = -Logarithm(m) / (kTwoPi10 * T);
    const double F = ArcCosine(b0 / (2.0 * std::sqrt(m))) / (kTwoPi10 * T);
    return {F, BW, (1.0 - b0 - c0) * A};
}

}  // namespace

void ResonatorEntry::SetABC(const SectionCoefficients& abc) const noexcept {
    packet_->frame.sections.Set(Place(), abc);
    packet_->WrittenABC(Bit());
}

void ResonatorEntry::Set(SectionRow FrequencyRows::*row, double dValue) const noexcept {
    (packet_->frequencies.*row)[Place()] = dValue;
    packet_->WrittenFB(Bit());
}

void ResonatorEntry::Set(SectionRow CoefficientRows::*row, double dValue) const noexcept {
    (packet_->frame.sections.*row)[Place()] = dValue;
    packet_->WrittenABC(Bit());
}

double ResonatorEntry::Get(SectionRow FrequencyRows::*row) const noexcept {
    UpdateFB();
    return (packet_->frequencies.*row)[Place()];
}

double ResonatorEntry::Get(SectionRow CoefficientRows::*row) const noexcept {
    packet_->UpdateABC(Bit());
    return (packet_->frame.sections.*row)[Place()];
}

int& ResonatorEntry::UserState() const noexcept { return packet_->userStates[Place()]; }

void ResonatorEntry::UpdateFB() const noexcept {
    if (!packet_->TakeStaleFB(Bit())) return;
    const double T = packet_->frame.sampleTime;
    const SectionCoefficients abc = packet_->frame.sections.At(Place());
    const auto [F, BW, G] =
        UnitCode() == kCascadeZeros.unitCode ? AntiResonatorFB(abc, T) : ResonatorFB(abc, T);
    FrequencyRows& fb = packet_->frequencies;
    fb.F[Place()] = F;
    fb.BW[Place()] = BW;
    fb.G[Place()] = G;
}

}  // namespace larynth
