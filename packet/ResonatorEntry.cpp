// SPDX-License-Identifier: MIT
#include "packet/ResonatorEntry.h"

#include <algorithm>
#include <cmath>

#include "engine/Constants.h"
#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "engine/vector/Kernels.h"
#include "packet/KlattPacketData.h"

namespace larynth {

namespace {

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
    UpdateABC(std::span(this, 1));
    return abc_->*value;
}

void ResonatorEntry::UpdateABC(std::span<ResonatorEntry> entries) noexcept {
    if (std::ranges::none_of(entries, &ResonatorEntry::NeedsABC)) return;
    vector::SectionDesign design;
    for (std::size_t lane = 0; lane < entries.size(); ++lane) {
        const ResonatorEntry& entry = entries[lane];
        design.F[lane] = entry.fb_.F;
        design.BW[lane] = entry.fb_.BW;
        design.G[lane] = entry.fb_.G;
        if (entry.IsAntiResonator()) design.antiResonators |= 1U << lane;
    }
    vector::FastestKernels().sections(design, entries.front().owner_->frame.sampleTime);
    for (std::size_t lane = 0; lane < entries.size(); ++lane) {
        ResonatorEntry& entry = entries[lane];
        if (!entry.NeedsABC()) continue;
        *entry.abc_ = {design.A[lane], design.B[lane], design.C[lane]};
        const bool isComputedAtEveryRead = entry.IsAntiResonator() && entry.fb_.F == 0.0;
        if (!isComputedAtEveryRead) entry.current_ = Current::Both;
    }
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
