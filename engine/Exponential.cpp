// SPDX-License-Identifier: MIT
#include "engine/Exponential.h"

#include <limits>

namespace larynth {

/// x = 2^k·(1 + f) with 1 + f next to 1; the series of FDLIBM (Ng 1993) in f/(2 + f). Taken apart by its
/// bits, a denormal number has a logarithm also where the processor takes it for 0.
double Logarithm(double x) {
    constexpr double kLn2High = 6.93147180369123816490e-01, kLn2Low = 1.90821492927058770002e-10;
    constexpr double L1 = 6.666666666666735130e-01, L2 = 3.999999999940941908e-01,
                     L3 = 2.857142874366239149e-01, L4 = 2.222219843214978396e-01,
                     L5 = 1.818357216161805012e-01, L6 = 1.531383769920937332e-01,
                     L7 = 1.479819860511658591e-01;
    constexpr std::uint64_t kRootOfHalf = 0x3FE6A09E667F3BCD, kInfinity = 0x7FF0000000000000;

    auto bits = std::bit_cast<std::uint64_t>(x);
    if (bits << 1 == 0) return -std::numeric_limits<double>::infinity();
    if (bits > kInfinity) return std::numeric_limits<double>::quiet_NaN();  // a NaN, or below 0
    if (bits == kInfinity) return x;
    int exponent = 0;
    if (bits >> 52 == 0) {  // denormal: as if it had a leading one
        const int shift = std::countl_zero(bits) - 11;
        bits <<= shift;
        exponent = -shift;
    }
    // The whole part of the exponent, so that 1 + f lies between the roots of 1/2 and 2.
    const std::uint64_t whole = (bits - kRootOfHalf) >> 52 << 52;
    const double k = exponent + static_cast<int>(static_cast<std::int64_t>(whole) >> 52);
    const double f = std::bit_cast<double>(bits - whole) - 1.0;

    const double half = 0.5 * f * f;
    const double s = f / (2.0 + f);
    const double z = s * s;
    const double w = z * z;
    const double R = z * (L1 + w * (L3 + w * (L5 + w * L7))) + w * (L2 + w * (L4 + w * L6));
    return k * kLn2High - ((half - (s * (half + R) + k * kLn2Low)) - f);
}

}  // namespace larynth
