// SPDX-License-Identifier: MIT
#include "engine/Flutter.h"
#include "engine/VoicingSourceCore.h"
#include "engine/WaveTablePlayer.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

Samples Take(auto& source, std::size_t count) {
    return Feed([&](double) { return source.Evaluate(); }, Samples(count));
}

VoicingSourceCore Source(double F0, double AV, double OQ, double DI) {
    VoicingSourceCore source;
    source.SetSampleTime(1.0 / 2048.0);
    source.SetParams(F0, AV, OQ, DI);
    return source;
}

TEST(VoicingSourceCore, ClosureAndPeriodEndBelongToTheirPhases) {
    // T divides the open phase of 1/256 s and the period of 1/128 s evenly; the peak is −AV·K·Tp.
    for (const double DI : {0.0, -0.5}) {
        VoicingSourceCore source = Source(128.0, 1.0, 0.5, DI);
        const Samples samples = Take(source, 18);
        EXPECT_NEAR(samples[7], -5.134898976610932, 1e-12);
        EXPECT_EQ(Samples(samples.begin() + 8, samples.begin() + 17), Samples(9));
        EXPECT_EQ(samples[17], samples[0]);
    }
    for (VoicingSourceCore silent : {Source(0.0, 1.0, 0.5, 0.5), Source(kNan, 1.0, 0.5, 0.0),
                                     Source(100.0, 0.0, 0.5, 0.5), Source(100.0, 1.0, 0.0, 0.0)}) {
        EXPECT_EQ(Take(silent, 12), Samples(12));
    }
    VoicingSourceCore resumed = Source(kNan, 1.0, 0.5, 0.0), fresh = Source(128.0, 1.0, 0.5, 0.0);
    Take(resumed, 12);
    resumed.SetParams(128.0, 1.0, 0.5, 0.0);
    EXPECT_EQ(Take(resumed, 3), Take(fresh, 3)) << "time stands still without a pitch";
}

TEST(Flutter, ManyStepsAtOnceReachTheTimesOfSingleSteps) {
    constexpr double kUnit = 0x1p-39 * 1e5;  // steps FLT·10⁻⁵ of a last place of times from 2^13 on
    for (const double start : {0.0, 0.2, 1.0 - 1e-4, 8191.999, 8192.0, 16383.9999}) {
        for (const double FLT : {0.0, -9.0, 9.07, 800.0, 1e12, 0.5 * kUnit, 1.5 * kUnit, 2.5 * kUnit,
                                 0.4 * kUnit, 2.6 * kUnit, 3.0 * kUnit}) {
            Flutter single, together;
            single.Step(100.0, 0.1, start * 1e5);
            single.Step(100.0, 0.1, kUnit);  // to an odd multiple of the unit
            together = single;
            for (const std::size_t count : {110U, 0U, 1U, 2U, 250U}) {
                Samples times(count);
                together.Advance(FLT, times);
                const auto step = [&](double time) { return single.Advance(FLT, {&time, 1}), time; };
                ASSERT_EQ(times, Feed(step, Samples(count))) << start << " and steps of " << FLT;
            }
        }
    }
}

WaveTablePlayer PlayerOf(const Samples& wave, double fs, double OQ, double F0) {
    WaveTablePlayer player;
    player.SetSampleFreq(fs);
    player.SetF0(F0);
    player.SetAmplitude(1.0);
    player.Rebuild(wave, OQ);
    return player;
}

/// The first entries of a table, one a sample: with these frequencies the phase is not rounded.
Samples Entries(WaveTablePlayer player, std::size_t count) {
    player.SetSampleFreq(16384.0);
    player.SetF0(49.00000000000001);
    return Take(player, count);
}

TEST(WaveTablePlayer, LaysTheWaveformOutByInterpolationWithUnitPower) {
    // The virtual period ends with the last sample: nothing to interpolate to.
    EXPECT_EQ(Entries(PlayerOf({3.0, -1.0, 2.0}, 490.0, 0.95, 0.0), 10),
              (Samples{1.3887301496588271, 0.8332380897952963, 0.27774602993176545, -0.2777460299317653,
                       -0.18516401995451034, 0.23145502494313785, 0.6480740698407862, 0.9258200997725514,
                       0.9258200997725514, 0.9258200997725514}));
    Samples wave;
    for (int k = 0; k < 100; ++k) wave.push_back(7 * k % 11 - 4);
    const Samples entries = Entries(PlayerOf(wave, 11025.0, 0.5, 0.0), 113);
    EXPECT_EQ(entries.back(), -1.2091607851843862e-13) << "exactly 0 if the position were a product";
}

TEST(WaveTablePlayer, WhatIsNextToSilentIsNotRaised) {
    // The power of a pulse of one sample in a period of four is a quarter of its square.
    for (const auto& [value, entry] : {std::pair{0.0632, 0.0632}, {0.0633, 2.0}}) {
        EXPECT_EQ(Entries(PlayerOf({value, 0.0}, 490.0, 0.5, 0.0), 1)[0], entry);
    }
}

TEST(WaveTablePlayer, APeriodEndsWhereTheTableEndsAndWithoutATableTimeStandsStill) {
    WaveTablePlayer player;
    player.SetSampleFreq(512.0);
    player.SetF0(245.0);  // five entries a sample, without rounding: the third stands behind the last entry
    player.SetAmplitude(-1.0);
    EXPECT_EQ(Take(player, 5), Samples(5));
    player.Rebuild(Samples{1.0, 0.0}, 0.5);
    EXPECT_EQ(Take(player, 5), (Samples{-2.0, 0.0, -2.0, 0.0, -2.0}));
}

TEST(WaveTablePlayer, OutsideTheTableIsSilence) {
    for (const double fs : {0.0, kNan, kInfinity, -kInfinity, 1e300, -1e300, 5e-324}) {
        for (const double F0 : {100.0, -100.0, kInfinity, -kInfinity, 1e300, 5e-324}) {
            WaveTablePlayer extreme = PlayerOf({1.0}, 490.0, 0.5, F0);
            extreme.SetSampleFreq(fs);
            for (const double y : Take(extreme, 4)) EXPECT_TRUE(y >= 0.0 && y <= 1.5) << fs << ' ' << F0;
        }
    }
}

}  // namespace
}  // namespace larynth
