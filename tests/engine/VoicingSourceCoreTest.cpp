// SPDX-License-Identifier: MIT
#include <cmath>

#include "engine/VoicingSourceCore.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

constexpr double kExactT = 1.0 / 1024.0;  // phases are sums without rounding

struct Frame {
    double F0 = 100.0, AV = 1.0, OQ = 0.5, DI = 0.0;
};

VoicingSourceCore Source(const Frame& frame, double T = kExactT) {
    VoicingSourceCore source;
    source.SetSampleTime(T);
    source.SetParams(frame.F0, frame.AV, frame.OQ, 0.0, 0.0, frame.DI);
    return source;
}

Samples Take(VoicingSourceCore& source, std::size_t count) {
    return Feed([&source](double) { return source.Evaluate(true); }, Samples(count));
}

TEST(VoicingSourceCore, IsSilentUntilParametersArrive) {
    VoicingSourceCore source;
    source.SetSampleTime(kExactT);
    EXPECT_EQ(Take(source, 3), Samples(3));
    source.SetOQ(0.5);
    source.RestartPeriod();
    EXPECT_NEAR(source.Evaluate(true), 160.44845252919213, 1e-11);
}

TEST(VoicingSourceCore, PulseRepeatsAfterThePeriodAndDiplophoniaAddsAnother) {
    // The period of 10.24 samples is 11 long.
    struct Row {
        double DI;
        Samples open, closed;
    };
    const Samples pulse = {1.6044845252919, 1.8792857423309, 0.8244036511168, -1.5601617483502,
                           -5.2744104560701};
    const Row rows[] = {
        {0.0, pulse, Samples(6)},
        {-0.5, pulse, Samples(6)},
        {0.25,
         {2.8929476509891, 2.0973538048844, -1.0251858306630, -1.5601617483502, -5.2744104560701},
         {0.0, 0.0, 0.0, 0.0672819753976, 1.2307548701190, 1.3615957076511}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.DI);
        VoicingSourceCore source = Source({.DI = row.DI});
        for (int period = 0; period < 2; ++period) {
            ExpectNear(Take(source, 5), row.open, 1e-12);
            ExpectNear(Take(source, 6), row.closed, 1e-12);
        }
    }
}

TEST(VoicingSourceCore, ClosureAndPeriodEndBelongToTheirPhases) {
    // T divides the open phase of 1/256 s and the period of 1/128 s evenly; the peak is −AV·K·Tp.
    VoicingSourceCore source = Source({.F0 = 128.0}, 1.0 / 2048.0);
    const Samples samples = Take(source, 18);
    EXPECT_NEAR(samples[7], -5.134898976610932, 1e-12);
    EXPECT_EQ(Samples(samples.begin() + 8, samples.begin() + 17), Samples(9));
    EXPECT_EQ(samples[17], samples[0]);
}

TEST(VoicingSourceCore, PulseEnergyDependsOnAmplitudeAndPeriodOnly) {
    // (15·AV·T0)²; the sum misses half of the last sample's square, less than 0.2 % here.
    struct Row {
        Frame frame;
        double energy;
    };
    const Row rows[] = {
        {{.OQ = 0.2}, 0.0225}, {{.OQ = 0.9}, 0.0225}, {{.AV = 2.0}, 0.09}, {{.F0 = 50.0}, 0.09}};
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.frame.F0 << " Hz, OQ " << row.frame.OQ);
        constexpr double T = 1e-6;
        VoicingSourceCore source = Source(row.frame, T);
        double energy = 0.0;
        for (int i = 0; i < 1.0 / row.frame.F0 / T; ++i) energy += std::pow(source.Evaluate(true), 2) * T;
        EXPECT_NEAR(energy, row.energy, 0.002 * row.energy);
    }
}

TEST(VoicingSourceCore, AZeroParameterSilencesTheSource) {
    for (const Frame& frame :
         {Frame{.F0 = 0.0, .DI = 0.5}, {.F0 = kNan}, {.AV = 0.0, .DI = 0.5}, {.OQ = 0.0}}) {
        VoicingSourceCore source = Source(frame);
        EXPECT_EQ(Take(source, 12), Samples(12)) << frame.F0 << " " << frame.AV << " " << frame.OQ;
    }
}

TEST(VoicingSourceCore, PhaseAdvancesWhereTheCachedSampleIsReturned) {
    VoicingSourceCore source = Source({});
    const double first = source.Evaluate(false);
    EXPECT_EQ(source.Evaluate(false), first);
    EXPECT_NEAR(source.Evaluate(true), 0.8244036511168435, 1e-13);
}

TEST(VoicingSourceCore, AShorterPeriodEndsOnTheNextSample) {
    VoicingSourceCore source = Source({.F0 = 80.0});
    Take(source, 7);
    source.SetPeriodFromF0(200.0);
    EXPECT_EQ(source.F0(), 80.0);
    EXPECT_EQ(source.Evaluate(true), 0.0);
    EXPECT_GT(source.Evaluate(true), 0.0);
    source.SetPeriodFromF0(0.0);
    EXPECT_EQ(Take(source, 3), Samples(3));
}

}  // namespace
}  // namespace larynth
