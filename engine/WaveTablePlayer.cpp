// SPDX-License-Identifier: MIT
#include "engine/WaveTablePlayer.h"

#include <cmath>

#include "engine/Exception.h"

namespace larynth {
namespace {

/// The waveform and the silence behind it, at the waveform's own sampling.
struct VirtualPeriod {
    std::span<const double> wave;
    std::size_t length;  // samples, with the silence

    double Sample(std::size_t i) const { return i < wave.size() ? wave[i] : 0.0; }

    /// Linear between samples; constant behind the last one.
    double At(double position) const {
        const auto i = static_cast<std::size_t>(position);
        const double a = Sample(i);
        if (i + 1 >= length) return a;
        return a + (Sample(i + 1) - a) * (position - static_cast<double>(i));
    }
};

/// The factor that gives the period unit mean power. What is next to silent is not raised.
double NormalisationOf(const VirtualPeriod& period) {
    constexpr double kLeastPower = 0.001;
    double energy = 0.0;
    for (const double w : period.wave) energy += w * w;
    const double power = energy / static_cast<double>(period.length);  // NaN for an empty period
    return power >= kLeastPower ? 1.0 / std::sqrt(power) : 1.0;
}

std::vector<double> Resampled(const VirtualPeriod& period, std::size_t count, double factor) {
    std::vector<double> table;
    table.reserve(count);
    const double step = static_cast<double>(period.length) / static_cast<double>(count);
    double position = 0.0;
    for (std::size_t j = 0; j < count; ++j) {
        table.push_back(period.At(position) * factor);
        position += step;  // added up, not multiplied: the roundings are part of the result
    }
    return table;
}

[[noreturn]] void FailSize() {
    throw Zelvani::Exception("size of the table or the waveform", "wave table cannot be built",
                             "WaveTablePlayer", 0);
}

}  // namespace

std::size_t WaveTablePlayer::EntryCount() const {
    // Rounded to a double before it is truncated: 11025 Hz makes 224.99999999999997, which is 224 entries.
    const double count = fs_ * kReferencePeriod;
    if (!(count > -1.0 && count < static_cast<double>(kMostSamples) + 1.0)) FailSize();
    return static_cast<std::size_t>(static_cast<std::ptrdiff_t>(count));
}

void WaveTablePlayer::Rebuild(std::span<const double> wave, double OQ) {
    constexpr double kLeastOQ = 0.1;
    const std::size_t count = EntryCount();
    if (std::isnan(OQ) || wave.size() > kMostSamples) FailSize();
    if (OQ < kLeastOQ) {
        table_ = std::vector<double>(count, 0.0);
    } else {
        const double length = static_cast<double>(wave.size()) / OQ;
        const VirtualPeriod period{wave, static_cast<std::size_t>(length)};
        table_ = Resampled(period, count, NormalisationOf(period));
    }
    OQ_ = OQ;
}

void WaveTablePlayer::TakeSettingsOf(const WaveTablePlayer& other) {
    Component::operator=(other);
    F0_ = other.F0_;
    AV_ = other.AV_;
    fs_ = other.fs_;
    UpdateStep();
}

}  // namespace larynth
