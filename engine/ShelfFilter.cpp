// SPDX-License-Identifier: MIT
#include "engine/ShelfFilter.h"

#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

#include "engine/Trigonometry.h"

namespace larynth {
namespace {

/// H(s) = (s² + Q·s + R) / (s² + (Q/G)·s + R/G): gain G at s = 0, 1 as s grows.
struct AnalogShelf {
    double G, Q, R;
};

/// B(z) = b0 + b1·z + b2·z² over D(z) = 1 + d1·z + d2·z², z being the delay of one sample.
struct DigitalShelf {
    double b0, b1, b2;
    double d1, d2;
};

AnalogShelf DesignAnalog(double G, double W, double P3, double P4) {
    const double E = (P3 * (G * G) - (P3 * G + G - 1.0)) + P4;
    const double Q = W * (E + 3.0 * P3 * P4 * G - 4.0 * P4 * G) / (P3 + G - 1.0 - P3 * G - P4 - P4 * P3);
    const double R = 2.0 * (W * W) * (E + P3 * P4 * G - 2.0 * P4 * G) /
                     (G * G - P3 * (G * G) + P3 * G + P3 * P4 * G - G - P4 * G);
    return {G, Q, R};
}

/// Bilinear transform, s = K·(1 − z)/(1 + z) with K = 2·fs.
DigitalShelf Digitise(const AnalogShelf& analog, double K) {
    const auto [G, Q, R] = analog;
    const double V = K * K + (Q / G) * K + R / G;
    return {
        .b0 = (K * K + K * Q + R) / V,
        .b1 = (2.0 * R - 2.0 * (K * K)) / V,
        .b2 = (K * K - K * Q + R) / V,
        .d1 = (2.0 * R / G - 2.0 * (K * K)) / V,
        .d2 = (K * K - (Q / G) * K + R / G) / V,
    };
}

/// Power gain at the angular frequency `omega` (radians per sample).
double PowerGain(const DigitalShelf& shelf, double omega) {
    const double c = Cosine(omega), s = Sine(omega);  // z = c + i·s
    /// |k0 + k1·z + k2·z²|²
    const auto power = [c, s](double k0, double k1, double k2) {
        const double re = k2 * c + k1, im = k2 * s;
        const double fullRe = (re * c - im * s) + k0, fullIm = re * s + im * c;
        return fullRe * fullRe + fullIm * fullIm;
    };
    return power(shelf.b0, shelf.b1, shelf.b2) / power(1.0, shelf.d1, shelf.d2);
}

/// The factor that brings the mean power gain away from the shelf to 1: from 0.04·pi up for the low shelf,
/// below 0.3·pi for the high one. The sum over that part is divided by the number of all points.
double NormalScale(const DigitalShelf& shelf, char kind) {
    // Repeated subtraction stays above −pi for 101 points, both ends included; the product 100·step would
    // not.
    constexpr double kStep = 0.031415926535897934;
    std::vector<double> power;
    for (double omega = 0.0; omega > -std::numbers::pi; omega -= kStep)
        power.push_back(PowerGain(shelf, omega));

    const auto n = static_cast<double>(power.size());
    const auto cut = static_cast<std::size_t>(n * (kind == 'l' ? 0.036 : 0.3));
    const std::size_t first = kind == 'l' ? cut + 1 : 0;
    const std::size_t last = kind == 'l' ? power.size() : cut;
    double sum = 0.0;
    for (std::size_t k = first; k < last; ++k) sum = sum + power[k];
    return std::sqrt(1.0 / (sum / n));
}

}  // namespace

void DesignShelfFilter(double G, double F, double P3, double P4, double fs, std::vector<double>& feedback,
                       std::vector<double>& feedForward, char kind) {
    // The high shelf is the low shelf mirrored about a quarter of the sample frequency.
    if (kind == 'h') F = 0.5 * fs - F;
    const double K = 2.0 * fs;
    const double W = K * Tangent((F / fs) * std::numbers::pi * 0.5);
    DigitalShelf shelf = Digitise(DesignAnalog(G, W, P3, P4), K);
    if (kind == 'h') {
        shelf.b1 = -shelf.b1;
        shelf.d1 = -shelf.d1;
    }
    const double scale = NormalScale(shelf, kind);

    std::vector<double> a = {-shelf.d1, -shelf.d2};
    std::vector<double> b = {shelf.b0 * scale, shelf.b1 * scale, shelf.b2 * scale};
    feedback = std::move(a);
    feedForward = std::move(b);
}

}  // namespace larynth
