// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "engine/Exponential.h"
#include "engine/SectionValues.h"
#include "engine/Trigonometry.h"
#include "engine/vector/Kernels.h"

namespace larynth::vector {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Description {
    double F, BW, G;
    bool anti;
};

/// The coefficients of one section, in the order of operations that decides their bits.
SectionValues Designed(const Description& d, double T) {
    if (d.anti ? d.F == 0.0 : d.F <= 0.0 || d.BW <= 0.0) return {d.anti ? 1.0 : d.G, 0.0, 0.0};
    const double r = Exponential(-3.141592654 * d.BW * T);
    const double C = -(r * r);
    const double B = 2.0 * r * Cosine(6.283185308 * d.F * T);
    const double A = d.anti ? d.G / (1.0 - B - C) : d.G * (1.0 - B - C);
    return d.anti ? SectionValues{A, -B * A, -C * A} : SectionValues{A, B, C};
}

bool Same(double a, double b) { return a == b || (a != a && b != b); }

TEST(SectionDesign, EveryLaneIsDesignedAsASingleSectionIs) {
    const double odd[] = {0.0, -0.0, -300.0, 5e-324, 1e7, 1e12, 1e300, kInfinity, -kInfinity, kNan};
    std::mt19937 random(5);
    std::uniform_real_distribution<double> frequency(0.0, 12000.0), gain(-2.0, 2.0);
    const auto value = [&](auto& usual) { return random() % 8 == 0 ? odd[random() % 10] : usual(random); };
    for (const Kernels* const kernels : AvailableKernels()) {
        for (int round = 0; round < 4000; ++round) {
            const double T = round % 3 == 0 ? 1.0 / 11025.0 : round % 3 == 1 ? 1.0 / 44100.0 : 1.0;
            SectionDesign design;
            Description rows[SectionDesign::kLanes];
            for (int k = 0; k < SectionDesign::kLanes; ++k) {
                rows[k] = {value(frequency), value(frequency), gain(random), random() % 4 == 0};
                design.F[k] = rows[k].F;
                design.BW[k] = rows[k].BW;
                design.G[k] = rows[k].G;
                design.antiResonators |= rows[k].anti ? 1U << k : 0U;
            }
            kernels->sections(design, T);
            for (int k = 0; k < SectionDesign::kLanes; ++k) {
                const auto [F, BW, G, anti] = rows[k];
                const SectionValues expected = Designed(rows[k], T);
                ASSERT_TRUE(Same(design.A[k], expected.A) && Same(design.B[k], expected.B) &&
                            Same(design.C[k], expected.C))
                    << kernels->name << ": " << F << ' ' << BW << ' ' << G << (anti ? " anti" : "");
            }
        }
    }
}

}  // namespace
}  // namespace larynth::vector
