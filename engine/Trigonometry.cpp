// SPDX-License-Identifier: MIT
#include "engine/Trigonometry.h"

#include <cstddef>
#include <limits>

namespace larynth {
namespace {

__extension__ using Wide = unsigned __int128;

/// The bits of 2/pi, after 64 zeros.
constexpr std::uint64_t kTwoOverPi[] = {
    0x0000000000000000, 0xA2F9836E4E441529, 0xFC2757D1F534DDC0, 0xDB6295993C439041, 0xFE5163ABDEBBC561,
    0xB7246E3A424DD2E0, 0x06492EEA09D1921C, 0xFE1DEB1CB129A73E, 0xE88235F52EBB4484, 0xE99C7026B45F7E41,
    0x3991D639835339F4, 0x9C845F8BBDF9283B, 0x1FF897FFDE05980F, 0xEF2F118B5A0A6D1F, 0x6D367ECF27CB09B7,
    0x4F463F669E5FEA2D, 0x7527BAC7EBE5F17B, 0x3D0739F78A5292EA, 0x6BFB5FB11F8D5D08, 0x56033046FC7B6BAB,
};

/// 64 of those bits, from bit number `first` on.
std::uint64_t TwoOverPiBits(std::size_t first) {
    const std::uint64_t* const word = kTwoOverPi + first / 64;
    const std::size_t shift = first % 64;
    return (word[0] << shift) | (word[1] >> 1 >> (63 - shift));
}

/// x·2^shift for a result in the range of normal numbers.
double Scaled(double x, int shift) {
    return x * std::bit_cast<double>(static_cast<std::uint64_t>(1023 + shift) << 52);
}

/// A number in two parts, the second far below the first.
struct Pair {
    double high, low;
};

/// a + b for |a| ≥ |b|, exactly (Dekker 1971).
Pair Sum(double a, double b) {
    const double high = a + b;
    return {high, (a - high) + b};
}

/// a·b, exactly: both are split into halves whose products are exact (Dekker 1971).
Pair Product(double a, double b) {
    constexpr double kSplit = 0x1p27 + 1.0;
    const double a1 = kSplit * a - (kSplit * a - a), a2 = a - a1;
    const double b1 = kSplit * b - (kSplit * b - b), b2 = b - b1;
    const double high = a * b;
    return {high, ((a1 * b1 - high) + a1 * b2 + a2 * b1) + a2 * b2};
}

/// a/b with one rounding to speak of.
double Quotient(const Pair& a, const Pair& b) {
    const double q = a.high / b.high;
    const auto [high, low] = Product(q, b.high);
    return q - (((high - a.high) + low) - (a.low - q * b.low)) / b.high;
}

}  // namespace

/// Payne and Hanek (1983): with x = m·2^e the bits of 2/pi that make whole turns are left out, and 192 bits
/// from there on make the product with the 53 bits of m exact to 2^-136 of a quadrant. No double is nearer
/// than 2^-61 to a multiple of pi/2.
QuadrantAngle ReduceHuge(double x) {
    constexpr std::uint64_t kHalfPi = 0xC90FDAA22168C235;  // times 2^63
    constexpr std::uint64_t kHidden = std::uint64_t{1} << 52;
    const auto bits = std::bit_cast<std::uint64_t>(x);
    const auto exponent = static_cast<std::size_t>((bits >> 52) & 0x7FFU);  // biased by 1075
    if (exponent == 0x7FF) return {x - x, 0.0, 0};
    const std::uint64_t m = (bits & (kHidden - 1)) | kHidden;
    const std::size_t first = exponent + 62 - 1075;

    const Wide low = Wide{m} * TwoOverPiBits(first + 128);
    const Wide middle = Wide{m} * TwoOverPiBits(first + 64) + (low >> 64);
    const std::uint64_t high = m * TwoOverPiBits(first) + static_cast<std::uint64_t>(middle >> 64);

    // The quadrant, and behind its two bits the fraction of one, which is brought to −1/2 … 1/2.
    Wide fraction = ((Wide{high} << 64) | static_cast<std::uint64_t>(middle)) << 2;
    std::uint64_t quadrant = high >> 62;
    const bool above = (fraction >> 127) != 0;
    if (above) {
        fraction = -fraction;
        ++quadrant;
    }
    int zeros = 0;
    for (; (fraction >> 127) == 0; ++zeros) fraction <<= 1;
    const auto product =
        static_cast<std::uint64_t>((Wide{kHalfPi} * static_cast<std::uint64_t>(fraction >> 64)) >> 64);

    const bool negative = std::signbit(x);
    const double unit = Scaled(above != negative ? -1.0 : 1.0, -63 - zeros);
    constexpr std::uint64_t kRest = 0x7FF;  // what is not among the highest 53 bits
    return {static_cast<double>(product & ~kRest) * unit, static_cast<double>(product & kRest) * unit,
            negative ? 0U - quadrant : quadrant};
}

double SineOfHuge(double x, std::uint64_t quadrants) {
    const auto [r, correction, quadrant] = ReduceHuge(x);
    return SineOf({r, correction, quadrant + quadrants});
}

/// The quotient of sine and cosine, both in two parts.
double Tangent(double x) {
    const auto [r, correction, quadrant] =
        std::fabs(x) <= kSineReductionLimit ? ReduceToQuadrant(x) : ReduceHuge(x);
    const Pair sine = Sum(r, -SineDeficit(r, correction));
    const auto [z, rest] = Product(r, r);
    const double one = 1.0 - 0.5 * z;
    const Pair cosine = Sum(one, ((1.0 - one) - 0.5 * z) + (CosineExcess(r, z, correction) - 0.5 * rest));
    return (quadrant & 1U) != 0 ? Quotient({-cosine.high, -cosine.low}, sine) : Quotient(sine, cosine);
}

/// By the arc sine's rational approximation of FDLIBM (Ng 1993); beyond 1/2 through half of the angle.
double ArcCosine(double x) {
    constexpr double kHalfPi = 1.57079632679489655800e+00, kHalfPiRest = 6.12323399573676603587e-17;
    constexpr double P0 = 1.66666666666666657415e-01, P1 = -3.25565818622400915405e-01,
                     P2 = 2.01212532134862925881e-01, P3 = -4.00555345006794114027e-02,
                     P4 = 7.91534994289814532176e-04, P5 = 3.47933107596021167570e-05;
    constexpr double Q1 = -2.40339491173441421878e+00, Q2 = 2.02094576023350569471e+00,
                     Q3 = -6.88283971605453293030e-01, Q4 = 7.70381505559019352791e-02;
    const auto ratio = [](double z) {
        const double p = z * (P0 + z * (P1 + z * (P2 + z * (P3 + z * (P4 + z * P5)))));
        return p / (1.0 + z * (Q1 + z * (Q2 + z * (Q3 + z * Q4))));
    };

    const double magnitude = std::fabs(x);
    if (!(magnitude <= 1.0)) return std::numeric_limits<double>::quiet_NaN();
    if (magnitude < 0.5) return kHalfPi - (x - (kHalfPiRest - x * ratio(x * x)));
    const double z = (1.0 - magnitude) * 0.5;
    const double s = std::sqrt(z);
    if (x < 0.0) return 2.0 * kHalfPi - 2.0 * (s + (ratio(z) * s - kHalfPiRest));
    if (z == 0.0) return 0.0;
    const auto head = std::bit_cast<double>(std::bit_cast<std::uint64_t>(s) >> 32 << 32);
    const double rest = (z - head * head) / (s + head);  // of the root behind its first 21 bits
    return 2.0 * (head + (ratio(z) * s + rest));
}

}  // namespace larynth
