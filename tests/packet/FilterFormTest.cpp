// SPDX-License-Identifier: MIT
#include "packet/FilterForm.h"
#include "tests/packet/NewPacket.h"

namespace larynth::test {

namespace {

using Filter = ILarynthVocalTractFilterParams;

template <std::size_t N>
void ExpectNear(const ComPtr<Filter>& filter, HRESULT (Filter::*get)(int, double*),
                const double (&expected)[N], double tolerance) {
    for (std::size_t i = 0; i < N; ++i) {
        double value = -1.0;
        EXPECT_EQ((filter.Get()->*get)(static_cast<int>(i), &value), S_OK);
        EXPECT_NEAR(value, expected[i], tolerance) << "coefficient " << i;
    }
}

}  // namespace

TEST(MultiplyQuadraticsTest, GivesTheProductOfTheFactors) {
    constexpr std::array<double, 5> expected{1.0, 0.75, 0.025, -0.075, -0.02};
    const auto product = MultiplyQuadratics<2>({0.5, 0.25}, {0.1, -0.2});
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_DOUBLE_EQ(product[i], expected[i]);

    EXPECT_EQ(MultiplyQuadratics<0>({}, {}), (std::array<double, 1>{1.0}));
    // (1 + z)^6 from three factors: whole numbers, no rounding
    EXPECT_EQ(MultiplyQuadratics<3>({2.0, 2.0, 2.0}, {1.0, 1.0, 1.0}),
              (std::array<double, 7>{1.0, 6.0, 15.0, 20.0, 15.0, 6.0, 1.0}));
}

TEST(FilterFormTest, ANewPacketHasNoFilter) {
    const auto filter = NewPacket<Filter>();
    EXPECT_EQ(Get(filter, &Filter::GetAlphaDegree), 12);
    EXPECT_EQ(Get(filter, &Filter::GetBetaDegree), 3);
    ExpectNear(filter, &Filter::GetAlpha, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 0.0);
    ExpectNear(filter, &Filter::GetBeta, {0, 0, 0}, 0.0);
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
}

TEST(FilterFormTest, PoleAndZeroOfANewPacketCancel) {
    const auto filter = NewPacket<Filter>();
    EXPECT_EQ(filter->ConvertToFilter(), S_OK);
    ExpectNear(filter, &Filter::GetAlpha, {1.920939165526, -0.950001886465, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
               1e-12);
    ExpectNear(filter, &Filter::GetBeta, {1.0, -1.920939165526, 0.950001886465}, 1e-12);
    EXPECT_EQ(Validity(filter), std::pair(1, 2));

    // The nasal pole's coefficients are kept: a new sample time does not reach it any more.
    const auto pole = Cascade<ITTSResonatorABCParams>(filter, 0);
    As<ILarynthParams>(filter)->SetSampleFreq(8000.0);
    EXPECT_NEAR(Get(pole, &ITTSResonatorABCParams::GetB), 1.920939165526, 1e-12);
}

TEST(FilterFormTest, AllSectionsOfTheCascadeEnter) {
    const auto filter = NewPacket<Filter>();
    constexpr double kPoles[][2] = {{300, 90}, {500, 60}, {1500, 90}, {2500, 120}, {3300, 150}, {3750, 200}};
    int index = 0;
    for (const auto& [F, BW] : kPoles) {
        const auto pole = Cascade(filter, index++);
        pole->SetFreq(F);
        pole->SetBW(BW);
    }
    Zero(filter)->SetFreq(450.0);
    EXPECT_EQ(filter->ConvertToFilter(), S_OK);
    // Multiplied out apart, in another order: a few units in the last place of the largest number.
    ExpectNear(filter, &Filter::GetAlpha,
               {3.7703983759796014, -7.5510389822116544, 11.812087198190122, -15.866559946999207,
                18.400697581442373, -18.722482472892658, 16.845097485947118, -13.326551140482799,
                9.1100667513297999, -5.3918300104584054, 2.5687013384602375, -0.66722268060629164},
               1e-13);
    ExpectNear(filter, &Filter::GetBeta, {0.28940827882525266, -0.54571018736609711, 0.27493841084262155},
               1e-14);
}

TEST(FilterFormTest, IndicesOutsideFailAndChangeNothing) {
    const auto filter = NewPacket<Filter>();
    for (const int index : {-1, 12}) {
        double value = 7.5;
        EXPECT_EQ(filter->SetAlpha(index, 1.0), E_FAIL);
        EXPECT_EQ(filter->GetAlpha(index, &value), E_FAIL);
        EXPECT_EQ(value, 7.5);
    }
    for (const int index : {-1, 3}) {
        double value = 7.5;
        EXPECT_EQ(filter->SetBeta(index, 1.0), E_FAIL);
        EXPECT_EQ(filter->GetBeta(index, &value), E_FAIL);
        EXPECT_EQ(value, 7.5);
    }
    EXPECT_EQ(Validity(filter), std::pair(1, 0));

    EXPECT_EQ(filter->SetAlpha(11, 0.5), S_OK);
    ExpectNear(filter, &Filter::GetAlpha, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.5}, 0.0);
}

TEST(FilterFormTest, TheFormWrittenLastIsTheValidOne) {
    const auto filter = NewPacket<Filter>();
    EXPECT_EQ(filter->SetBeta(0, 2.0), S_OK);
    EXPECT_EQ(Validity(filter), std::pair(0, 2));
    EXPECT_EQ(filter->ConvertFromFilter(), S_OK);
    EXPECT_EQ(Validity(filter), std::pair(0, 2));

    Parallel(filter, 1)->SetFreq(900.0);
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
    ExpectNear(filter, &Filter::GetBeta, {2.0, 0.0, 0.0}, 0.0);

    filter->SetAlpha(0, 1.0);
    filter->ConvertToFilter();
    EXPECT_EQ(Validity(filter), std::pair(0, 2)) << "a conversion does not make resonators valid";
    Zero<ITTSAntiResonatorABCParams>(filter)->SetC(0.5);
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
}

}  // namespace larynth::test
