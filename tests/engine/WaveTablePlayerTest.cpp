// SPDX-License-Identifier: MIT
#include <limits>
#include <utility>

#include "engine/Exception.h"
#include "engine/WaveTablePlayer.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

WaveTablePlayer PlayerOf(const Samples& wave, double fs, double OQ, double F0) {
    WaveTablePlayer player;
    player.SetSampleFreq(fs);
    player.SetF0(F0);
    player.SetAmplitude(1.0);
    player.Rebuild(wave, OQ);
    return player;
}

Samples Take(WaveTablePlayer& player, std::size_t count) {
    return Feed([&player](double) { return player.Evaluate(true); }, Samples(count));
}

TEST(WaveTablePlayer, TheTableHasAReferencePeriodOfEntries) {
    const std::pair<double, std::size_t> rows[] = {
        {8000.0, 163},  {11025.0, 224}, {16000.0, 326}, {22050.0, 449},
        {44100.0, 899}, {49.0, 0},      {0.0, 0},       {-48.0, 0},
    };
    for (const auto& [fs, count] : rows) {
        for (const double OQ : {0.5, 0.05}) {
            EXPECT_EQ(PlayerOf({1.0, -1.0}, fs, OQ, 100.0).Table().size(), count) << fs << ' ' << OQ;
        }
    }
}

TEST(WaveTablePlayer, LaysTheWaveformOutByInterpolationWithUnitPower) {
    const Samples wave = {3.0, -1.0, 2.0};
    const struct {
        double OQ, normalisation;
        Samples table;
    } rows[] = {
        {0.3,
         0.8451542547285166,
         {2.53546276418555, -0.8451542547285166, 1.6903085094570331, 0, 0, 0, 0, 0, 0, 0}},
        {0.95,  // the virtual period ends with the last sample: nothing to interpolate to
         0.4629100498862757,
         {1.3887301496588271, 0.8332380897952963, 0.27774602993176545, -0.2777460299317653,
          -0.18516401995451034, 0.23145502494313785, 0.6480740698407862, 0.9258200997725514,
          0.9258200997725514, 0.9258200997725514}},
    };
    for (const auto& row : rows) {
        const WaveTablePlayer player = PlayerOf(wave, 490.0, row.OQ, 0.0);
        EXPECT_EQ(player.OQ(), row.OQ);
        EXPECT_EQ(player.Normalisation(), row.normalisation);
        EXPECT_EQ(player.Table(), row.table);
    }
}

TEST(WaveTablePlayer, TablePositionsAreAddedUp) {
    Samples wave;
    for (int k = 0; k < 100; ++k) wave.push_back(7 * k % 11 - 4);
    const WaveTablePlayer player = PlayerOf(wave, 11025.0, 0.5, 0.0);
    EXPECT_EQ(player.Normalisation(), 0.42543562981151706);
    ASSERT_EQ(player.Table().size(), 224u);
    const std::pair<std::size_t, double> rows[] = {
        {0, -1.7017425192460682},
        {1, 0.9572301670759134},
        {2, -0.0607765185445026},
        {50, 0.21271781490585223},
        {110, -0.36465911126690753},
        {111, -1.519412963612675},
        {113, 0.0},
        {112, -1.2091607851843862e-13},  // exactly 0 if it were a product
        {223, 0.0},
    };
    for (const auto& [j, expected] : rows) EXPECT_EQ(player.Table()[j], expected) << j;
}

TEST(WaveTablePlayer, WhatIsNextToSilentIsNotRaised) {
    // The power of a pulse of one sample in a period of four is a quarter of its square.
    const std::pair<Samples, double> rows[] = {
        {{0.0632, 0.0}, 1.0},
        {{0.0633, 0.0}, 31.595576619273306},
        {{0.0, 0.0}, 1.0},
        {{kNan, 0.0}, 1.0},
        {{}, 1.0},
    };
    for (const auto& [wave, normalisation] : rows) {
        EXPECT_EQ(PlayerOf(wave, 490.0, 0.5, 0.0).Normalisation(), normalisation);
    }
    WaveTablePlayer player = PlayerOf({0.0633, 0.0}, 490.0, 0.5, 70.0);
    player.Rebuild(Samples{1.0, 1.0}, 0.09);
    EXPECT_EQ(player.Normalisation(), 31.595576619273306) << "a silent table is not measured";
    EXPECT_EQ(player.Table(), Samples(10));
    EXPECT_EQ(Take(player, 12), Samples(12));
}

TEST(WaveTablePlayer, ReadsTheTableBetweenItsEntries) {
    WaveTablePlayer player = PlayerOf({3.0, -1.0, 2.0}, 490.0, 0.3, 70.0);
    EXPECT_EQ(Take(player, 12), (Samples{2.53546276418555, 0.24147264420814707, 0.2414726442081483, 0, 0, 0,
                                         0, 0, 0.24147264420814485, 0.24147264420814984, 0, 0}));
    player.SetAmplitude(-2.0);
    player.Rebuild(Samples{1.0}, 0.95);  // a constant table; the phase runs on
    EXPECT_EQ(Take(player, 1), Samples{-2.0});
}

TEST(WaveTablePlayer, APeriodIsAWholeNumberOfSamples) {
    Samples pulse(112);
    pulse[0] = 1.0;
    const std::pair<double, std::size_t> rows[] = {{100.0, 110}, {200.0, 55}, {49.0, 225}};
    for (const auto& [F0, period] : rows) {
        SCOPED_TRACE(F0);
        WaveTablePlayer player = PlayerOf(pulse, 11025.0, 0.5, F0);
        const Samples samples = Take(player, 900);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            EXPECT_EQ(samples[i] == 14.966629547095765, i % period == 0) << i;
        }
    }
}

TEST(WaveTablePlayer, APeriodEndsWhereTheTableEnds) {
    // Five entries a sample, without rounding: the third sample stands at 10, behind the last entry.
    WaveTablePlayer player = PlayerOf({1.0, 0.0}, 512.0, 0.5, 245.0);
    ASSERT_EQ(player.Table().size(), 10u);
    EXPECT_EQ(Take(player, 6), (Samples{2.0, 0.0, 2.0, 0.0, 2.0, 0.0}));
}

TEST(WaveTablePlayer, WithoutATableTimeStandsStill) {
    WaveTablePlayer player;
    player.SetF0(100.0);
    player.SetAmplitude(1.0);
    EXPECT_EQ(Take(player, 5), Samples(5));
    player.Rebuild(Samples{1.0, 0.0}, 0.5);
    EXPECT_EQ(Take(player, 1), Samples{2.0}) << "the period begins now";
}

TEST(WaveTablePlayer, OutsideTheTableIsSilenceAndThePhaseMovesOn) {
    WaveTablePlayer player = PlayerOf({3.0, -1.0, 2.0}, 490.0, 0.3, -98.0);
    EXPECT_EQ(Take(player, 4), (Samples{2.53546276418555, 0, 0, 0}));
    player.SetF0(98.0);
    EXPECT_EQ(Take(player, 4), Samples(4)) << "back by two entries a sample";
    EXPECT_NEAR(Take(player, 1)[0], 2.53546276418555, 1e-12);

    for (const double fs : {0.0, kNan, kInf, -kInf, 1e300, -1e300, 5e-324}) {
        for (const double F0 : {100.0, -100.0, kInf, -kInf, 1e300, 5e-324}) {
            WaveTablePlayer extreme = PlayerOf({1.0}, 490.0, 0.5, F0);
            extreme.SetSampleFreq(fs);
            const Samples samples = Take(extreme, 4);
            for (const double y : samples) EXPECT_TRUE(y >= 0.0 && y <= 1.5) << fs << ' ' << F0 << ' ' << y;
        }
    }
}

TEST(WaveTablePlayer, ATableThatCannotBeBuiltChangesNothing) {
    const struct {
        double fs, OQ;
    } rows[] = {{-11025.0, 0.5}, {-11025.0, 0.05}, {1e18, 0.5}, {1e18, 0.05},
                {kInf, 0.5},     {-kInf, 0.5},     {kNan, 0.5}, {490.0, kNan}};
    for (const auto& row : rows) {
        WaveTablePlayer player = PlayerOf({3.0, -1.0, 2.0}, 490.0, 0.3, 70.0);
        const Samples table = player.Table();
        player.SetSampleFreq(row.fs);
        EXPECT_THROW(player.Rebuild(Samples{1.0}, row.OQ), Zelvani::Exception) << row.fs << ' ' << row.OQ;
        EXPECT_EQ(player.Table(), table);
        EXPECT_EQ(player.OQ(), 0.3);
        EXPECT_EQ(player.Normalisation(), 0.8451542547285166);
    }
}

TEST(WaveTablePlayer, RepeatsACachedSampleWithoutAdvancing) {
    WaveTablePlayer player = PlayerOf({3.0, -1.0, 2.0}, 490.0, 0.3, 49.0);
    EXPECT_FALSE(player.IsValid());
    for (int i = 0; i < 3; ++i) EXPECT_EQ(player.Evaluate(false), 2.53546276418555);
    player.Invalidate();
    EXPECT_NEAR(player.Evaluate(false), -0.8451542547285166, 1e-12);
}

}  // namespace
}  // namespace larynth
