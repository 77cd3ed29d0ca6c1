// SPDX-License-Identifier: MIT
#include "tests/packet/Packet.h"

namespace larynth::test {
namespace {

using Filter = ILarynthVocalTractFilterParams;

void ExpectFilter(const ComPtr<Filter>& filter, const std::array<double, 12>& alpha, const Three& beta) {
    int i = 0, k = 0;
    for (const double a : alpha) EXPECT_NEAR(Get(filter, &Filter::GetAlpha, i++), a, 1e-12) << i;
    for (const double b : beta) EXPECT_NEAR(Get(filter, &Filter::GetBeta, k++), b, 1e-12) << k;
}

TEST(FilterForm, IsTheProductOfTheCascadesSections) {
    const auto filter = NewPacket<Filter>();
    ExpectFilter(filter, {}, {});  // a new packet has none

    Cascade<ITTSResonatorABCParams>(filter, 5)->SetA(0.5);
    EXPECT_EQ(Code(filter->ConvertToFilter()), "S_OK");
    // The nasal pole and the nasal zero cancel; a gain of 0.5 is left.
    ExpectFilter(filter, {1.920939165526, -0.950001886465}, {0.5, -0.960469582763, 0.4750009432325});
    EXPECT_EQ(Validity(filter), std::pair(1, 2));
}

TEST(FilterForm, WrittenLastIsTheValidOne) {
    const auto filter = NewPacket<Filter>();
    double value = 0.0;
    for (const HRESULT outside : {filter->SetAlpha(12, 1.0), filter->GetAlpha(-1, &value),
                                  filter->SetBeta(-1, 1.0), filter->GetBeta(3, &value)})
        EXPECT_EQ(Code(outside), "E_FAIL");
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
    EXPECT_EQ(Code(filter->SetBeta(0, 2.0)), "S_OK");
    EXPECT_EQ(Code(filter->ConvertFromFilter()), "S_OK");
    EXPECT_EQ(Validity(filter), std::pair(0, 2));
    Parallel(filter, 1)->SetFreq(900.0);
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
    EXPECT_EQ(Code(filter->SetAlpha(11, 0.5)), "S_OK");
    ExpectFilter(filter, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.5}, {2.0, 0.0, 0.0});
    filter->ConvertToFilter();
    EXPECT_EQ(Validity(filter), std::pair(0, 2)) << "a conversion does not make resonators valid";
    Zero<ITTSAntiResonatorABCParams>(filter)->SetC(0.5);
    EXPECT_EQ(Validity(filter), std::pair(1, 0));
}

}  // namespace
}  // namespace larynth::test
