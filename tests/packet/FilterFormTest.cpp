// SPDX-License-Identifier: MIT
#include "tests/packet/Packet.h"

namespace larynth::test {
namespace {

using Filter = ILarynthVocalTractFilterParams;

void ExpectFilter(const ComPtr<Filter>& filter, std::initializer_list<double> alpha,
                  std::initializer_list<double> beta, double tolerance) {
    int i = 0;
    for (const double a : alpha) EXPECT_NEAR(Get(filter, &Filter::GetAlpha, i++), a, tolerance) << i;
    while (i < 12) EXPECT_EQ(Get(filter, &Filter::GetAlpha, i++), 0.0) << i;
    i = 0;
    for (const double b : beta) EXPECT_NEAR(Get(filter, &Filter::GetBeta, i++), b, tolerance) << i;
}

TEST(FilterForm, IsTheProductOfTheCascadesSections) {
    const auto filter = NewPacket<Filter>();
    EXPECT_EQ(Get(filter, &Filter::GetAlphaDegree), 12);
    EXPECT_EQ(Get(filter, &Filter::GetBetaDegree), 3);
    ExpectFilter(filter, {}, {0.0, 0.0, 0.0}, 0.0);  // a new packet has none

    Cascade<ITTSResonatorABCParams>(filter, 5)->SetA(0.5);
    EXPECT_EQ(Code(filter->ConvertToFilter()), "S_OK");
    // The nasal pole and the nasal zero cancel; a gain of 0.5 is left.
    ExpectFilter(filter, {1.920939165526, -0.950001886465}, {0.5, -0.960469582763, 0.4750009432325}, 1e-12);
    EXPECT_EQ(Validity(filter), std::pair(1, 2));

    constexpr double kPoles[][2] = {{300, 90}, {500, 60}, {1500, 90}, {2500, 120}, {3300, 150}, {3750, 200}};
    for (int i = 0; i < 6; ++i) {
        Cascade(filter, i)->SetFreq(kPoles[i][0]);
        Cascade(filter, i)->SetBW(kPoles[i][1]);
    }
    Zero(filter)->SetFreq(450.0);
    EXPECT_EQ(Code(filter->ConvertToFilter()), "S_OK");
    // Multiplied out apart, in another order: a few units in the last place of the largest number.
    ExpectFilter(filter,
                 {3.7703983759796014, -7.5510389822116544, 11.812087198190122, -15.866559946999207,
                  18.400697581442373, -18.722482472892658, 16.845097485947118, -13.326551140482799,
                  9.1100667513297999, -5.3918300104584054, 2.5687013384602375, -0.66722268060629164},
                 {0.28940827882525266, -0.54571018736609711, 0.27493841084262155}, 1e-13);
}

TEST(FilterForm, WrittenLastIsTheValidOne) {
    const auto filter = NewPacket<Filter>();
    double value = 7.5;
    for (const int outside : {-1, 12}) {
        EXPECT_EQ(Code(filter->SetAlpha(outside, 1.0)), "E_FAIL");
        EXPECT_EQ(Code(filter->GetAlpha(outside, &value)), "E_FAIL");
        EXPECT_EQ(Code(filter->SetBeta(outside == 12 ? 3 : outside, 1.0)), "E_FAIL");
        EXPECT_EQ(Code(filter->GetBeta(outside == 12 ? 3 : outside, &value)), "E_FAIL");
    }
    EXPECT_EQ(value, 7.5);
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
    EXPECT_EQ(Code(filter->SetBeta(0, 2.0)), "S_OK");
    EXPECT_EQ(Code(filter->ConvertFromFilter()), "S_OK");
    EXPECT_EQ(Validity(filter), std::pair(0, 2));
    Parallel(filter, 1)->SetFreq(900.0);
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
    EXPECT_EQ(Code(filter->SetAlpha(11, 0.5)), "S_OK");
    ExpectFilter(filter, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.5}, {2.0, 0.0, 0.0}, 0.0);
    filter->ConvertToFilter();
    EXPECT_EQ(Validity(filter), std::pair(0, 2)) << "a conversion does not make resonators valid";
    Zero<ITTSAntiResonatorABCParams>(filter)->SetC(0.5);
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
}

}  // namespace
}  // namespace larynth::test
