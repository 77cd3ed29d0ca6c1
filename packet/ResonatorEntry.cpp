// SPDX-License-Identifier: MIT
#include "packet/ResonatorEntry.h"

#include <cmath>

#include "engine/Constants.h"
#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "packet/KlattPacketData.h"

namespace larynth {

namespace {

SectionCoefficients ResonatorABC(const FrequencyForm& fb, double T) noexcept {
    const auto [F, BW, G] = fb;
    if (F <= 0.0 || BW <= 0.0) return {G, 0.0, 0.0};
    const double r = Exponential(-kPi10 * BW * T);
    const double C = -(r * r);
    const double B = 2.0 * r * Cosine(kTwoPi10 * F * T);
    return {G * (1.0 - B - C), B, C};
}

SectionCoefficients AntiResonatorABC(const FrequencyForm& fb, double T) noexcept {
    const auto [F, BW, G] = fb;
    if (F == 0.0) return {1.0, 0.0, 0.0};
    const double r = Exponential(-kPi10 * BW * T);
    const double c0 = -(r * r);
    const double b0 = 2.0 * r * Cosine(kTwoPi10 * F * T);
    const double A = G / (1.0 - b0 - c0);
    return {A, -b0 * A, -c0 * A};
}

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

void ResonatorEntry::Attach(KlattPacketData& owner, const ResonatorGroup& group, int position,
                            SectionCoefficients& abc) noexcept {
    owner_ = &owner;
    group_ = &group;
    position_ = position;
    abc_ = &abc;
}

void ResonatorEntry::CopyFrom(const ResonatorEntry& source) noexcept {
    current_ = source.current_;
    userState = source.userState;
    fb_ = source.fb_;
}

void ResonatorEntry::SetABC(const SectionCoefficients& abc) noexcept {
    *abc_ = abc;
    Written(Current::ABC);
}

void ResonatorEntry::Set(double FrequencyForm::*value, double dValue) noexcept {
    fb_.*value = dValue;
    Written(Current::FB);
}

void ResonatorEntry::Set(double SectionCoefficients::*value, double dValue) noexcept {
    abc_->*value = dValue;
    Written(Current::ABC);
}

double ResonatorEntry::Get(double FrequencyForm::*value) noexcept {
    UpdateFB();
    return fb_.*value;
}

double ResonatorEntry::Get(double SectionCoefficients::*value) noexcept {
    UpdateABC();
    return abc_->*value;
}

void ResonatorEntry::UpdateABC() noexcept {
    if (current_ != Current::FB) return;
    const double T = owner_->frame.sampleTime;
    const bool anti = IsAntiResonator();
    *abc_ = anti ? AntiResonatorABC(fb_, T) : ResonatorABC(fb_, T);
    if (!anti || fb_.F != 0.0) current_ = Current::Both;
}

void ResonatorEntry::UpdateFB() noexcept {
    if (current_ != Current::ABC) return;
    const double T = owner_->frame.sampleTime;
    fb_ = IsAntiResonator() ? AntiResonatorFB(*abc_, T) : ResonatorFB(*abc_, T);
    current_ = Current::Both;
}

double& ResonatorEntry::Item(int k) noexcept {
    constexpr double FrequencyForm::*kValues[kValuesPerEntry] = {&FrequencyForm::F, &FrequencyForm::BW,
                                                                 &FrequencyForm::G};
    return fb_.*kValues[k];
}

int ResonatorEntry::ItemID(int k) const noexcept { return UnitCode() + kValuesPerEntry * position_ + k; }

int ResonatorEntry::UnitCode() const noexcept { return group_->unitCode; }

bool ResonatorEntry::IsAntiResonator() const noexcept { return UnitCode() == kCascadeZeros.unitCode; }

void ResonatorEntry::Written(Current form) noexcept {
    current_ = form;
    owner_->validity = KlattPacketData::kResonatorDataValid;
}

}  // namespace larynth
