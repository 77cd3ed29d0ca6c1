// SPDX-License-Identifier: MIT
#include "engine/AntiResonator.h"
#include "engine/Multiplier.h"
#include "engine/Resonator.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

Resonator Designed(double F, double BW, double gain) {
    Resonator section(1.0, 0.5, 0.5);
    section.SetFB(F, BW, gain, 1.0 / 10000.0);
    return section;
}

TEST(Component, OutputIsValidOnlyAfterAStoreAndSurvivesInvalidation) {
    Multiplier element(3.0);
    EXPECT_FALSE(element.IsValid());
    EXPECT_EQ(element.Store(element.Process(2.0)), 6.0);
    EXPECT_TRUE(element.IsValid());
    element.Invalidate();
    EXPECT_FALSE(element.IsValid());
    EXPECT_EQ(element.Evaluate(true), 6.0);
}

TEST(Resonator, ImpulseResponseUsesTenDigitPi) {
    // With full pi the samples differ from the tenth digit on.
    Resonator section = Designed(500.0, 100.0, 1.0);
    ExpectNear(Feed(section, {1.0, 0.0, 0.0, 0.0}),
               {0.09581607585042728, 0.17661636331068023, 0.2355733368888544, 0.2683681986791807}, 1e-15);
    Resonator negative = Designed(-500.0, -100.0, 2.0);
    ExpectNear(Feed(negative, {1.0, 0.0}), {0.20405907003204904, 0.400530864346925}, 1e-15);
}

TEST(Resonator, ZeroFrequencyOrBandwidthIsAPlainGain) {
    const Samples widths = {80.0, 0.0, 80.0, kNan};
    const Samples frequencies = {-0.0, 500.0, kNan, 500.0};
    for (std::size_t i = 0; i < widths.size(); ++i) {
        Resonator section = Designed(frequencies[i], widths[i], 3.0);
        EXPECT_EQ(Feed(section, {1.0, -2.0, 0.5}), (Samples{3.0, -6.0, 1.5})) << "row " << i;
    }
}

TEST(Sections, NewCoefficientsContinueFromTheOldStateInTheStatedOrder) {
    // (1e16 − 1e16) + 1 keeps the 1 that any other order rounds away.
    Resonator poles(1.0, 0.0, 0.0);
    AntiResonator zeros(1.0, 0.0, 0.0);
    EXPECT_EQ(Feed(poles, {1e16, 1e16}), (Samples{1e16, 1e16}));
    EXPECT_EQ(Feed(zeros, {1e16, 1e16}), (Samples{1e16, 1e16}));
    poles.SetABC(1.0, 1.0, -1.0);
    zeros.SetABC(1.0, 1.0, -1.0);
    EXPECT_EQ(Feed(poles, {1.0, 0.0}), (Samples{1.0, -1e16}));
    EXPECT_EQ(Feed(zeros, {1.0, 0.0}), (Samples{1.0, -1e16}));
}

TEST(AntiResonator, InverseCoefficientsUndoAResonator) {
    const double A = 0.1, B = 1.8, C = -0.9;
    Resonator poles(A, B, C);
    AntiResonator zeros(1.0 / A, -B / A, -C / A);
    const Samples inputs = {1.0, -3.0, 0.0, 0.5, 100.0, 0.0, 0.0};
    ExpectNear(Feed(zeros, Feed(poles, inputs)), inputs, 1e-12);
}

}  // namespace
}  // namespace larynth
