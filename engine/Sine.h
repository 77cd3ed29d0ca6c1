// SPDX-License-Identifier: MIT
/// A sine of our own, within one unit in the last place: the same operations, and so the same bits, in scalar
/// code and in vector code of any width.
///
/// Argument reduction after Cody and Waite with pi/2 in parts of 33 bits, whose products with the number of
/// the quadrant are exact; polynomials of FDLIBM's kernels (Ng 1993), which take the rounding error of the
/// reduction as a correction.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace larynth {

/// The largest argument (absolute) that is reduced here; the C library serves the rare rest.
inline constexpr double kSineReductionLimit = 5e5;

/// An argument as `quadrant`·pi/2 + (r + correction), |r| ≤ pi/4; the quadrant's low two bits count.
struct QuadrantAngle {
    double r, correction;
    std::uint64_t quadrant;
};

/// For |x| ≤ kSineReductionLimit.
[[gnu::always_inline]] inline QuadrantAngle ReduceToQuadrant(double x) {
    constexpr double kTwoOverPi = 6.36619772367581382433e-01;
    constexpr double kHalfPi1 = 1.57079632673412561417e+00;  // first 33 bits of pi/2
    constexpr double kHalfPi2 = 6.07710050630396597660e-11;  // next 33 bits
    constexpr double kHalfPi3 = 2.02226624879595063154e-21;  // the rest
    constexpr double kToInteger = 0x1.8p52;                  // adding it rounds to an integer in the low bits

    const double shifted = x * kTwoOverPi + kToInteger;
    const double n = shifted - kToInteger;
    const double head = x - n * kHalfPi1;
    const double middle = n * kHalfPi2;
    const double reduced = head - middle;
    return {reduced, ((head - reduced) - middle) - n * kHalfPi3, std::bit_cast<std::uint64_t>(shifted)};
}

inline constexpr double kS1 = -1.66666666666666324348e-01;  // the sine's second coefficient

// The polynomials are summed in pairs, which shortens the chain of operations that wait for each other.

/// sin(r + correction) for |r| ≤ pi/4.
[[gnu::always_inline]] inline double SineKernel(double r, double correction) {
    constexpr double S2 = 8.33333333332248946124e-03, S3 = -1.98412698298579493134e-04,
                     S4 = 2.75573137070700676789e-06, S5 = -2.50507602534068634195e-08,
                     S6 = 1.58969099521155010221e-10;
    const double z = r * r;
    const double w = z * r;
    const double zz = z * z;
    const double p = (S2 + z * S3) + zz * ((S4 + z * S5) + zz * S6);
    return r - ((z * (0.5 * correction - w * p) - correction) - w * kS1);
}

/// cos(r + correction) for |r| ≤ pi/4.
[[gnu::always_inline]] inline double CosineKernel(double r, double correction) {
    constexpr double C1 = 4.16666666666666019037e-02, C2 = -1.38888888888741095749e-03,
                     C3 = 2.48015872894767294178e-05, C4 = -2.75573143513906633035e-07,
                     C5 = 2.08757232129817482790e-09, C6 = -1.13596475577881948265e-11;
    const double z = r * r;
    const double zz = z * z;
    const double p = (C1 + z * C2) + zz * ((C3 + z * C4) + zz * (C5 + z * C6));
    const double half = 0.5 * z;
    const double one = 1.0 - half;
    return one + (((1.0 - one) - half) + (zz * p - (r + z * r * kS1) * correction));
}

/// The third and the fourth quadrant are negative.
[[gnu::always_inline]] inline double WithSignOf(std::uint64_t quadrant, double magnitude) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(magnitude) ^ ((quadrant & 2U) << 62));
}

/// sin(x).
inline double Sine(double x) {
    if (!(std::fabs(x) <= kSineReductionLimit)) return std::sin(x);
    const auto [r, correction, quadrant] = ReduceToQuadrant(x);
    const double magnitude = (quadrant & 1U) != 0 ? CosineKernel(r, correction) : SineKernel(r, correction);
    return WithSignOf(quadrant, magnitude);
}

/// The same of an argument that was reduced, without a branch: a loop over it becomes vector code.
[[gnu::always_inline]] inline double ReducedSine(const QuadrantAngle& angle) {
    const auto sine = std::bit_cast<std::uint64_t>(SineKernel(angle.r, angle.correction));
    const auto cosine = std::bit_cast<std::uint64_t>(CosineKernel(angle.r, angle.correction));
    const std::uint64_t odd = 0U - (angle.quadrant & 1U);  // all bits where the quadrant takes the cosine
    return WithSignOf(angle.quadrant, std::bit_cast<double>((sine & ~odd) | (cosine & odd)));
}

}  // namespace larynth
