// SPDX-License-Identifier: MIT
/// A packet's sections through its views.
#include <cmath>

#include "packet/ResonatorParams.h"
#include "tests/packet/Packet.h"
#include "tests/support/Numbers.h"

namespace larynth::test {
namespace {

using FB = ITTSResonatorFBParams;
using ABC = ITTSResonatorABCParams;
using AntiFB = ITTSAntiResonatorFBParams;
using AntiABC = ITTSAntiResonatorABCParams;

template <class View>
void SetForm(const ComPtr<View>& view, const Three& values) {
    if constexpr (requires { view->SetFreq(0.0); }) {
        view->SetFreq(values[0]), view->SetBW(values[1]), view->SetGain(values[2]);
    } else {
        view->SetA(values[0]), view->SetB(values[1]), view->SetC(values[2]);
    }
}

/// At 11025 Hz. Expected values were computed apart, in double precision with the ten-digit pi; an exact one
/// would show from the tenth digit on. The last bits are left to exponential and cosine.
template <class To, class From>
void ExpectConversions(const ComPtr<From>& from, std::initializer_list<std::pair<Three, Three>> rows) {
    for (const auto& [given, expected] : rows) {
        SCOPED_TRACE(testing::PrintToString(given));
        SetForm(from, given);
        const Three converted = Form(As<To>(from));
        for (std::size_t i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(converted[i], expected[i]) << "value " << i;
        EXPECT_EQ(testing::PrintToString(Form(from)), testing::PrintToString(given)) << "not converted back";
    }
}

TEST(Section, AResonatorHasTwoForms) {
    const auto packet = NewPacket();
    for (const auto& pole : {Cascade(packet, 1), Parallel(packet, 6)}) {
        const Three full = {0.15913950998845916, 1.8868140541180944, -0.96638380911232402},
                    plain = {0.7, 0, 0};
        ExpectConversions<ABC>(pole, {{{500, 60, 2}, full}, {{0, 90, 0.7}, plain}, {{500, 0, 0.7}, plain}});
        ExpectConversions<ABC>(pole, {{{-500, 60, 0.7}, plain}, {{500, -5, 0.7}, plain}});
        const auto abc = As<ABC>(pole);
        const Three noPair = {0.0, 0.0, 1.0};  // not decaying, real poles
        ExpectConversions<FB>(abc, {{{1, 0.5, 0.2}, noPair}, {{1, 3, -1}, noPair}, {{1, -3, -1}, noPair}});
        ExpectConversions<FB>(abc, {{{1, 0.5, -0.5}, {2122.1651611746925, 1216.2537456826819, 1.0}}});
        ExpectConversions<FB>(abc, {{{0.4, 0.5, kNan}, {0.0, 0.0, 0.4}}});
    }
}

TEST(Section, OnlyAnAntiresonatorAtZeroIsComputedAtEveryRead) {
    const auto packet = NewPacket();
    const auto zero = Zero(packet);
    zero->SetFreq(0.0);
    EXPECT_EQ(Form(As<AntiABC>(zero)), (Three{1.0, 0.0, 0.0}));
    As<ITTSDoublePacket>(packet)->SetItemValue(28, 300.0);  // FNZ; an item's write tells nobody
    const Three kept = Form(As<AntiABC>(zero));
    EXPECT_NE(kept[1], 0.0);
    As<ITTSDoublePacket>(packet)->SetItemValue(28, 600.0);
    EXPECT_EQ(Form(As<AntiABC>(zero)), kept) << "above 0 it is computed once";
}

TEST(Section, AnAntiresonatorIsTheReciprocal) {
    const auto packet = NewPacket();
    const Three full = {3.065902304382075, -3.8015308632295359, 2.7356285588474609}, plain = {1, 0, 0};
    const Three inverse = {32.687988453078212, -66.096329024597082, 34.40834057151887};
    ExpectConversions<AntiABC>(Zero(packet),
                               {{{1500, 200, 2}, full}, {{0, 90, 0.25}, plain}, {{300, -90, 1}, inverse}});
    const auto abc = Zero<AntiABC>(packet);
    ExpectConversions<AntiFB>(abc, {{{2.0, -1.0, 1.0}, {2122.1651611746925, 1216.2537456826819, 2.0}}});
    for (const Three& none : {Three{0.0, 1.0, 1.0}, {1.0, 0.0, -1.0}, {1.0, 5.0, 1.0}}) {
        SetForm(abc, none);
        EXPECT_TRUE(std::isnan(Form(Zero(packet))[0])) << testing::PrintToString(none);
    }
}

TEST(Section, AFormThatWasReadIsKeptUntilTheNextWrite) {
    const auto packet = NewPacket();
    const auto items = As<ITTSDoublePacket>(packet);
    const auto fb = Cascade(packet, 1);
    const auto abc = Cascade<ABC>(packet, 1);
    SetForm(fb, {500.0, 60.0, 2.0});
    const Three computed = Form(abc);
    packet->SetSampleFreq(22050.0);
    items->SetItemValue(14, 90.0);  // its bandwidth: items tell nobody
    EXPECT_EQ(Form(abc), computed);
    EXPECT_EQ(Form(fb), (Three{500.0, 90.0, 2.0}));
    items->SetItemValue(14, 60.0);
    fb->SetGain(2.0);
    EXPECT_DOUBLE_EQ(Form(abc)[0], 0.040330024136980169);
}

TEST(Section, TwoViewsShowOneEntryThatTellsWhereItIs) {
    const auto packet = NewPacket();
    int unit = -1, index = -1;
    for (const auto& [id, wantedUnit, wantedIndex, view] :
         {std::tuple(1039, 0, 5, Cascade(packet, 5)), {3090, 1, 6, Parallel(packet, 6)}}) {
        const auto other =
            wantedUnit == 0 ? Cascade<ABC>(packet, wantedIndex) : Parallel<ABC>(packet, wantedIndex);
        EXPECT_EQ(Get(view, &FB::GetIDFreq), id);
        EXPECT_EQ(Get(view, &FB::GetIDGain), id + 2);
        EXPECT_EQ(Code(other->GetIDA(&unit)), "E_FAIL") << "coefficients are no items";
        EXPECT_EQ(Code(As<ITTSResonatorStructInfo>(view)->GetLocation(&unit, &index)), "S_OK");
        EXPECT_EQ(std::pair(unit, index), std::pair(wantedUnit, wantedIndex));
        view->SetState(id);
        EXPECT_EQ(Get(other, &ABC::GetState), id);
    }
    EXPECT_EQ(Code(Zero<ITTSAntiResonatorStructInfo>(packet)->GetLocation(&unit, nullptr)), "S_OK");
    EXPECT_EQ(unit, 0);
}

TEST(Section, AViewOfNothingFails) {
    const auto view = MakeObject<TTSResonatorParams>();
    double value = 0.0;
    int number = 0;
    IUnknown* packet = nullptr;
    for (const HRESULT result :
         {view->SetFreq(1.0), view->GetGain(&value), view->GetIDBW(&number), view->GetState(&number),
          view->GetLocation(&number, nullptr), view->QueryPacketInterface(IID_IUnknown, &packet)})
        EXPECT_EQ(Code(result), "E_FAIL");
}

}  // namespace
}  // namespace larynth::test
