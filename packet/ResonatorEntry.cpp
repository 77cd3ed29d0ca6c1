// SPDX-License-Identifier: MIT
#include "packet/ResonatorEntry.h"

#include <cmath>

#include "packet/KlattPacketData.h"

namespace larynth {

void ResonatorEntry::Attach(KlattPacketData& owner, int unitCode, int position) noexcept {
    owner_ = &owner;
    unitCode_ = unitCode;
    position_ = position;
}

void ResonatorEntry::CopyFrom(const ResonatorEntry& source) noexcept {
    current_ = source.current_;
    userState_ = source.userState_;
    fb_ = source.fb_;
    abc_ = source.abc_;
    position_ = source.position_;
    unitCode_ = source.unitCode_;
}

void ResonatorEntry::SetFB(const FrequencyForm& fb) noexcept {
    fb_ = fb;
    Written(Current::FB);
}

void ResonatorEntry::SetABC(const CoefficientForm& abc) noexcept {
    abc_ = abc;
    Written(Current::ABC);
}

void ResonatorEntry::Set(double FrequencyForm::*value, double dValue) noexcept {
    fb_.*value = dValue;
    Written(Current::FB);
}

void ResonatorEntry::Set(double CoefficientForm::*value, double dValue) noexcept {
    abc_.*value = dValue;
    Written(Current::ABC);
}

const FrequencyForm* ResonatorEntry::FB() noexcept {
    if (current_ == Current::ABC) {
        if (owner_ == nullptr) return nullptr;
        ABCToFB(owner_->sampleTime);
    }
    return &fb_;
}

const CoefficientForm* ResonatorEntry::ComputedABC(PolePosition& position) noexcept {
    if (owner_ == nullptr) return nullptr;
    FBToABC(owner_->sampleTime, position);
    return &abc_;
}

std::optional<double> ResonatorEntry::Get(double FrequencyForm::*value) noexcept {
    const FrequencyForm* fb = FB();
    return fb != nullptr ? std::optional(fb->*value) : std::nullopt;
}

std::optional<double> ResonatorEntry::Get(double CoefficientForm::*value) noexcept {
    const CoefficientForm* abc = ABC();
    return abc != nullptr ? std::optional(abc->*value) : std::nullopt;
}

double& ResonatorEntry::Item(int k) noexcept {
    constexpr double FrequencyForm::*kValues[kValuesPerEntry] = {&FrequencyForm::F, &FrequencyForm::BW,
                                                                 &FrequencyForm::G};
    return fb_.*kValues[k];
}

int ResonatorEntry::ItemID(int k) const noexcept { return unitCode_ + kValuesPerEntry * position_ + k; }

void ResonatorEntry::FBToABC(double T, PolePosition& position) noexcept {
    const auto [F, BW, G] = fb_;
    if (F <= 0.0 || BW <= 0.0) {
        abc_ = {G, 0.0, 0.0};  // passes its input, scaled
    } else {
        position.Compute(F, BW, T);
        const double r = position.Radius();
        const double C = -(r * r);
        const double B = 2.0 * r * position.Cosine();
        abc_ = {G * (1.0 - B - C), B, C};
    }
    current_ = Current::Both;
}

void ResonatorEntry::ABCToFB(double T) noexcept {
    const auto [A, B, C] = abc_;
    const double x = C < 0.0 ? B / (2.0 * std::sqrt(-C)) : 0.0;
    if (!(C < 0.0) || x > 1.0 || x < -1.0) {
        fb_ = {0.0, 0.0, A};  // no pair of conjugate poles: a plain gain is the nearest thing
    } else {
        const double BW = -std::log(-C) / (PolePosition::kTwoPi10 * T);
        const double F = std::acos(x) / (PolePosition::kTwoPi10 * T);
        fb_ = {F, BW, A / (1.0 - B - C)};
    }
    current_ = Current::Both;
}

void ResonatorEntry::Written(Current form) noexcept {
    current_ = form;
    if (owner_ != nullptr) owner_->validity = KlattPacketData::kResonatorDataValid;
}

}  // namespace larynth
