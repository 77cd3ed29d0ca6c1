// SPDX-License-Identifier: MIT
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "packet/KlattPacketData.h"
#include "packet/ResonatorEntry.h"

namespace larynth::test {

namespace {

// Written-out values were computed apart, in double precision with the ten-digit pi; an exact one would show
// from the tenth digit on. The last bits are left to the mathematical library.
void ExpectABC(const CoefficientForm* abc, const CoefficientForm& expected) {
    ASSERT_NE(abc, nullptr);
    EXPECT_DOUBLE_EQ(abc->A, expected.A);
    EXPECT_DOUBLE_EQ(abc->B, expected.B);
    EXPECT_DOUBLE_EQ(abc->C, expected.C);
}

void ExpectFB(const FrequencyForm* fb, const FrequencyForm& expected) {
    ASSERT_NE(fb, nullptr);
    EXPECT_DOUBLE_EQ(fb->F, expected.F);
    EXPECT_DOUBLE_EQ(fb->BW, expected.BW);
    EXPECT_DOUBLE_EQ(fb->G, expected.G);
}

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace

class ResonatorEntryTest : public ::testing::Test {
  protected:
    KlattPacketData packet;
    ResonatorEntry& pole = packet.cascadePoles[1];
    AntiResonatorEntry& zero = packet.cascadeZeros[0];
};

TEST_F(ResonatorEntryTest, FrequencyFormGivesCoefficients) {
    struct {
        FrequencyForm fb;
        CoefficientForm abc;
    } const rows[] = {
        {{300.0, 90.0, 1.0}, {0.029062720938880071, 1.920939165526268, -0.95000188646514805}},
        {{500.0, 60.0, 2.0}, {0.15913950998845916, 1.8868140541180944, -0.96638380911232402}},
        {{4900.0, 1500.0, 0.25}, {0.66276274540161828, -1.2257061812169943, -0.42534480038947903}},
        {{0.0, 90.0, 0.7}, {0.7, 0.0, 0.0}},
        {{500.0, -5.0, 0.7}, {0.7, 0.0, 0.0}},
        {{-500.0, 60.0, 0.7}, {0.7, 0.0, 0.0}},
        {{500.0, 0.0, 0.7}, {0.7, 0.0, 0.0}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.fb.F << " " << row.fb.BW << " " << row.fb.G);
        pole.SetFB(row.fb);
        ExpectABC(pole.ABC(), row.abc);
        ExpectFB(pole.FB(), row.fb);  // both are current: nothing is converted back
    }
}

TEST_F(ResonatorEntryTest, CoefficientsGiveFrequencyForm) {
    struct {
        CoefficientForm abc;
        FrequencyForm fb;
    } const rows[] = {{{1.0, 0.5, -0.5}, {2122.1651611746925, 1216.2537456826819, 1.0}},
                      {{0.3, -1.2, -0.81}, {4036.690893156137, 369.74866351579345, 0.099667774086378724}},
                      {{1.0, 0.5, 0.2}, {0.0, 0.0, 1.0}},  // no decaying pair
                      {{0.4, 0.5, 0.0}, {0.0, 0.0, 0.4}},
                      {{0.4, 0.5, kNaN}, {0.0, 0.0, 0.4}},
                      {{1.0, 3.0, -1.0}, {0.0, 0.0, 1.0}},  // real poles
                      {{1.0, -3.0, -1.0}, {0.0, 0.0, 1.0}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.abc.A << " " << row.abc.B << " " << row.abc.C);
        pole.SetABC(row.abc);
        ExpectFB(pole.FB(), row.fb);
    }
}

TEST_F(ResonatorEntryTest, AnAntiresonatorIsTheReciprocal) {
    struct {
        FrequencyForm fb;
        CoefficientForm abc;
    } const rows[] = {
        {{300.0, 90.0, 1.0}, {34.408340571518934, -66.09632902459721, 32.687988453078276}},
        {{1500.0, 200.0, 2.0}, {3.065902304382075, -3.8015308632295359, 2.7356285588474609}},
        {{300.0, -90.0, 1.0}, {32.687988453078212, -66.096329024597082, 34.40834057151887}},  // no fallback
        {{0.0, 90.0, 0.25}, {1.0, 0.0, 0.0}},  // the gain is ignored
        {{-0.0, 90.0, 0.25}, {1.0, 0.0, 0.0}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.fb.F << " " << row.fb.BW << " " << row.fb.G);
        zero.SetFB(row.fb);
        ExpectABC(zero.ABC(), row.abc);
    }

    zero.SetABC({2.0, -1.0, 1.0});
    ExpectFB(zero.FB(), {2122.1651611746925, 1216.2537456826819, 2.0});
    for (const CoefficientForm& abc :
         {CoefficientForm{0.0, 1.0, 1.0}, CoefficientForm{1.0, 0.0, -1.0}, CoefficientForm{1.0, 5.0, 1.0}}) {
        zero.SetABC(abc);
        EXPECT_TRUE(std::isnan(zero.FB()->F)) << abc.A << " " << abc.B << " " << abc.C;
    }
}

TEST_F(ResonatorEntryTest, AFormThatWasReadIsKeptUntilTheNextWrite) {
    const auto bandwidthItem = [](ResonatorEntry& entry) -> double& { return entry.Item(1); };
    pole.SetFB({500.0, 60.0, 2.0});
    const double computed = *pole.Get(&CoefficientForm::A);
    packet.sampleTime = 1.0 / 22050.0;
    bandwidthItem(pole) = 90.0;  // items tell nobody
    EXPECT_EQ(pole.Get(&CoefficientForm::A), computed);
    EXPECT_EQ(pole.Get(&FrequencyForm::BW), 90.0);

    bandwidthItem(pole) = 60.0;
    pole.Set(&FrequencyForm::G, 2.0);
    ExpectABC(pole.ABC(), {0.040330024136980169, 1.9628832111191234, -0.98304822318761353});

    pole.Set(&CoefficientForm::C, 0.5);  // A and B stay; no decaying pair any more
    bandwidthItem(pole) = 60.0;
    EXPECT_EQ(pole.Get(&FrequencyForm::BW), 0.0);
    EXPECT_EQ(pole.Get(&CoefficientForm::B), 1.9628832111191234);
}

TEST_F(ResonatorEntryTest, WritingOneValueKeepsTheOthersOfItsFormStaleOrNot) {
    pole.SetFB({300.0, 90.0, 1.0});
    pole.SetABC({1.0, 0.5, 0.2});
    pole.Set(&FrequencyForm::F, 500.0);
    EXPECT_EQ(pole.Get(&FrequencyForm::BW), 90.0);
    ExpectABC(pole.ABC(), {0.079248613332164597, 1.8707532731329835, -0.95000188646514805});
}

TEST_F(ResonatorEntryTest, OnlyAnAntiresonatorAtZeroConvertsAtEveryRead) {
    zero.SetFB({0.0, 90.0, 1.0});
    EXPECT_EQ(zero.Get(&CoefficientForm::A), 1.0);
    zero.Item(0) = 300.0;
    EXPECT_DOUBLE_EQ(*zero.Get(&CoefficientForm::A), 34.408340571518934);

    pole.SetFB({0.0, 90.0, 1.0});
    EXPECT_EQ(pole.Get(&CoefficientForm::A), 1.0);
    pole.Item(0) = 300.0;
    EXPECT_EQ(pole.Get(&CoefficientForm::A), 1.0);
}

TEST_F(ResonatorEntryTest, WithoutAnOwnerNothingIsConverted) {
    ResonatorEntry alone;
    EXPECT_EQ(alone.Get(&FrequencyForm::G), 1.0);
    EXPECT_EQ(alone.ABC(), nullptr);
    alone.Set(&CoefficientForm::B, 0.5);
    EXPECT_EQ(alone.Get(&CoefficientForm::B), 0.5);
    EXPECT_EQ(alone.Get(&FrequencyForm::F), std::nullopt);
}

}  // namespace larynth::test
