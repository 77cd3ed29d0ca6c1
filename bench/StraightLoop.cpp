// SPDX-License-Identifier: MIT
#include "bench/StraightLoop.h"

#include <algorithm>
#include <cmath>

#include "engine/Exponential.h"
#include "engine/Trigonometry.h"

namespace larynth::bench {
namespace {

constexpr double kPi = 3.141592654;  // ten digits, as everywhere in the model

double NextNoise(std::uint32_t& state, double amplitude) {
    state = 214013U * state + 2531011U;
    const int r = static_cast<int>((state >> 16) & 0x7FFFU);
    return (r * 3.051850947599719e-05 - 0.5) * amplitude * 1.732050808;
}

std::int16_t To16Bit(double value) {
    if (!(std::fabs(value) < 9223372036854775808.0)) return 0;
    return static_cast<std::int16_t>(static_cast<std::int64_t>(value));
}

Section ConvertPole(const double* item, double T) {
    const double F = item[0], BW = item[1], G = item[2];
    if (F <= 0.0 || BW <= 0.0) return {G, 0.0, 0.0};
    const double r = Exponential(-kPi * BW * T);
    const double C = -(r * r);
    const double B = 2.0 * r * Cosine(2.0 * kPi * F * T);
    return {G * (1.0 - B - C), B, C};
}

Section ConvertZero(const double* item, double T) {
    const double F = item[0], BW = item[1], G = item[2];
    if (F == 0.0) return {1.0, 0.0, 0.0};
    const double r = Exponential(-kPi * BW * T);
    const double c = -(r * r);
    const double b = 2.0 * r * Cosine(2.0 * kPi * F * T);
    const double A = G / (1.0 - b - c);
    return {A, -b * A, -c * A};
}

}  // namespace

Sections ConvertSections(const PlainFrame& frame) {
    const double T = 1.0 / frame.sampleFreq;
    Sections sections;
    sections.zero = ConvertZero(frame.items + kFirstZero, T);
    for (std::size_t i = 0; i < kPoles; ++i)
        sections.poles[i] = ConvertPole(frame.items + kFirstPole + 3 * i, T);
    for (std::size_t i = 0; i < kParallel; ++i)
        sections.parallel[i] = ConvertPole(frame.items + kFirstParallel + 3 * i, T);
    return sections;
}

/// The glottal pulse at one fundamental frequency.
struct StraightLoop::Pulse {
    Pulse(double f0, const double* items)
        : T0(f0 < 0.0 || f0 > 0.0 ? 1.0 / f0 : 0.0),
          Tp(items[OQ] * T0),
          silent(items[AV] == 0.0 || T0 == 0.0 || items[OQ] == 0.0) {
        const double K = Tp == 0.0 ? 0.0 : 15.0 * T0 / std::sqrt(0.13333333333333333 * (Tp * Tp * Tp));
        amplitude = items[AV] * K;
    }

    double At(double t) const { return t <= Tp ? amplitude * (2.0 * t - 3.0 * (t * t) / Tp) : 0.0; }

    double T0, Tp;  // s, period and open phase
    double amplitude;
    bool silent;
};

/// A low-pass behind the voicing; designed anew only when the tilt changes.
void StraightLoop::SetTilt(const PlainFrame& frame, double fs) {
    static constexpr double kBandwidth[] = {
        5000.0, 4350.0, 3790.0, 3330.0, 2930.0, 2700.0, 2580.0, 2468.0, 2364.0, 2260.0, 2157.0,
        2045.0, 1925.0, 1806.0, 1687.0, 1568.0, 1449.0, 1350.0, 1272.0, 1199.0, 1133.0, 1071.0,
        1009.0, 947.0,  885.0,  833.0,  781.0,  729.0,  677.0,  625.0,  599.0,  573.0,  547.0,
        521.0,  495.0,  469.0,  442.0,  416.0,  390.0,  364.0,  338.0,  312.0};
    const int tilt = std::clamp(static_cast<int>(frame.items[TL]), 0, 41);
    if (tilt == tilt_) return;
    tilt_ = tilt;
    if (tilt == 0) return;
    const double T = 1.0 / fs;
    const double excess = tilt - 10.0;
    const double gain = tilt > 10 ? 1.0 + excess * excess * 0.001 : 1.0;
    const double r = Exponential(-kPi * kBandwidth[tilt] * T);
    const double C = -(r * r);
    const double B = 2.0 * r * Cosine(2.0 * (T * (0.375 * tilt) * kPi));
    tiltSection_ = {gain * ((1.0 - B) - C), B, C};
}

void StraightLoop::Render(const PlainFrame& frame, const Sections& sections, std::int16_t* out) {
    const auto resonate = [](const Section& section, Memory& memory, double x) {
        const double y = (section.B * memory.last + section.C * memory.beforeLast) + section.A * x;
        memory.beforeLast = memory.last;
        memory.last = y;
        return y;
    };
    const double* const items = frame.items;
    const double fs = 1.0 / (1.0 / frame.sampleFreq);  // a packet keeps the reciprocal
    const double T = 1.0 / fs;
    SetTilt(frame, fs);
    Pulse pulse(items[F0], items);
    const bool flutters = items[F0] > 0.0 && items[FL] > 0.0;
    const double secondPulse = (1.0 - items[OQ]) * items[DI];  // its delay, in periods

    for (int n = 0; n < frame.length; ++n) {
        phase_ = phase_ + T;
        if (phase_ > pulse.T0) phase_ = 0.0;
        double voicing = 0.0;
        if (!pulse.silent) {
            voicing = pulse.At(phase_);
            if (items[DI] > 0.0) {
                double phase = phase_ + secondPulse * pulse.T0;
                if (phase > pulse.T0) phase = phase - pulse.T0;
                voicing = voicing + (1.0 - items[DI]) * pulse.At(phase);
            }
        }
        const double aspiration = NextNoise(noise_, items[AH]);
        const double frication = NextNoise(noise_, items[AF]);

        if (flutters) {
            flutterTime_ += items[FLT] * 1e-5;
            const double a = kPi * flutterTime_;
            const double s = (Sine(9.4 * a) + Sine(25.4 * a)) + Sine(14.2 * a);
            pulse = Pulse(items[F0] * (1.0 + s * items[FL] * 0.3333333333333333), items);
        }
        if (tilt_ != 0) voicing = resonate(tiltSection_, tiltMemory_, voicing);

        const double x = voicing + aspiration;
        double cascade =
            (sections.zero.B * zero_.last + sections.zero.C * zero_.beforeLast) + sections.zero.A * x;
        zero_.beforeLast = zero_.last;
        zero_.last = x;
        for (std::size_t i = 0; i < kPoles; ++i) cascade = resonate(sections.poles[i], poles_[i], cascade);

        double parallel = items[AB] * frication;
        for (std::size_t i = 0; i < kParallel; ++i)
            parallel = parallel + resonate(sections.parallel[i], parallel_[i], frication);

        const double y = (parallel + cascade) * outputGain;
        const double emphasised = y - preEmphasis * previousOutput_;
        previousOutput_ = y;
        out[n] = To16Bit(volume * emphasised);
    }
}

}  // namespace larynth::bench
