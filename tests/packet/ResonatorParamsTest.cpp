// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "packet/ResonatorParams.h"
#include "tests/packet/NewPacket.h"

namespace larynth::test {

namespace {

template <class Class, class FB, class ABC, class StructInfo>
void ExpectAllFailUnbound() {
    ComPtr<FB> fb;
    ASSERT_EQ(CreateInstance<Class>(nullptr, fb.Id(), fb.PutVoid()), S_OK);
    const auto abc = As<ABC>(fb);
    const auto info = As<StructInfo>(fb);

    double value = 7.5;
    int number = 77;
    ComPtr<IUnknown> packet;
    const HRESULT results[] = {fb->SetFreq(1.0),
                               fb->SetBW(1.0),
                               fb->SetGain(1.0),
                               fb->GetFreq(&value),
                               fb->GetBW(&value),
                               fb->GetGain(&value),
                               fb->GetIDFreq(&number),
                               fb->GetIDBW(&number),
                               fb->GetIDGain(&number),
                               fb->SetState(1),
                               fb->GetState(&number),
                               fb->GetFreq(nullptr),
                               abc->SetA(1.0),
                               abc->SetB(1.0),
                               abc->SetC(1.0),
                               abc->GetA(&value),
                               abc->GetB(&value),
                               abc->GetC(&value),
                               info->QueryPacketInterface(IID_IUnknown, packet.Put()),
                               info->GetLocation(&number, nullptr)};
    EXPECT_THAT(results, testing::Each(E_FAIL));
    EXPECT_EQ(value, 7.5);
    EXPECT_EQ(number, 77);
}

}  // namespace

TEST(ResonatorParamsTest, AViewOfNothingFails) {
    ExpectAllFailUnbound<TTSResonatorParams, ITTSResonatorFBParams, ITTSResonatorABCParams,
                         ITTSResonatorStructInfo>();
    ExpectAllFailUnbound<TTSAntiResonatorParams, ITTSAntiResonatorFBParams, ITTSAntiResonatorABCParams,
                         ITTSAntiResonatorStructInfo>();
}

TEST(ResonatorParamsTest, EachMethodReachesItsValue) {
    const auto packet = NewPacket();
    const auto fb = Zero(packet);
    const auto abc = As<ITTSAntiResonatorABCParams>(fb);

    fb->SetFreq(1500.0);
    fb->SetBW(200.0);
    fb->SetGain(2.0);
    EXPECT_EQ(Get(fb, &ITTSAntiResonatorFBParams::GetFreq), 1500.0);
    EXPECT_EQ(Get(fb, &ITTSAntiResonatorFBParams::GetBW), 200.0);
    EXPECT_EQ(Get(fb, &ITTSAntiResonatorFBParams::GetGain), 2.0);
    EXPECT_DOUBLE_EQ(Get(abc, &ITTSAntiResonatorABCParams::GetA), 3.065902304382075);
    EXPECT_DOUBLE_EQ(Get(abc, &ITTSAntiResonatorABCParams::GetB), -3.8015308632295359);
    EXPECT_DOUBLE_EQ(Get(abc, &ITTSAntiResonatorABCParams::GetC), 2.7356285588474609);

    abc->SetA(2.0);
    abc->SetB(-1.0);
    abc->SetC(1.0);
    EXPECT_DOUBLE_EQ(Get(fb, &ITTSAntiResonatorFBParams::GetFreq), 2122.1651611746925);
    EXPECT_DOUBLE_EQ(Get(fb, &ITTSAntiResonatorFBParams::GetBW), 1216.2537456826819);
    EXPECT_DOUBLE_EQ(Get(fb, &ITTSAntiResonatorFBParams::GetGain), 2.0);
}

TEST(ResonatorParamsTest, TwoViewsOfAnEntrySeeTheSameData) {
    const auto packet = NewPacket();
    const auto first = Parallel(packet, 2);
    const auto second = Parallel<ITTSResonatorABCParams>(packet, 2);
    EXPECT_NE(As<IUnknown>(first).Get(), As<IUnknown>(second).Get());
    second->SetA(0.5);
    EXPECT_EQ(Get(first, &ITTSResonatorFBParams::GetGain), 0.5);

    EXPECT_EQ(Get(first, &ITTSResonatorFBParams::GetState), 0);
    first->SetState(-4);
    EXPECT_EQ(Get(second, &ITTSResonatorABCParams::GetState), -4);
}

TEST(ResonatorParamsTest, IdsAndLocations) {
    const auto packet = NewPacket();
    struct Row {
        const char* name;
        ComPtr<ITTSResonatorFBParams> view;
        int id, unit, index;
    };
    for (const Row& row :
         {Row{"cascade 0", Cascade(packet, 0), 1024, 0, 0}, Row{"cascade 5", Cascade(packet, 5), 1039, 0, 5},
          Row{"parallel 4", Parallel(packet, 4), 3084, 1, 4},
          Row{"parallel 6", Parallel(packet, 6), 3090, 1, 6}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Get(row.view, &ITTSResonatorFBParams::GetIDFreq), row.id);
        EXPECT_EQ(Get(row.view, &ITTSResonatorFBParams::GetIDBW), row.id + 1);
        EXPECT_EQ(Get(row.view, &ITTSResonatorFBParams::GetIDGain), row.id + 2);
        int unit = -1, index = -1;
        EXPECT_EQ(As<ITTSResonatorStructInfo>(row.view)->GetLocation(&unit, &index), S_OK);
        EXPECT_EQ(unit, row.unit);
        EXPECT_EQ(index, row.index);
    }

    const auto zero = Zero(packet);
    EXPECT_EQ(Get(zero, &ITTSAntiResonatorFBParams::GetIDBW), 2049);
    int unit = -1, index = -1, id = 77;
    EXPECT_EQ(As<ITTSAntiResonatorStructInfo>(zero)->GetLocation(nullptr, &index), S_OK);
    EXPECT_EQ(As<ITTSAntiResonatorStructInfo>(zero)->GetLocation(&unit, nullptr), S_OK);
    EXPECT_EQ(unit, 0);
    EXPECT_EQ(index, 0);

    const auto abc = As<ITTSAntiResonatorABCParams>(zero);
    for (const auto get : {&ITTSAntiResonatorABCParams::GetIDA, &ITTSAntiResonatorABCParams::GetIDB,
                           &ITTSAntiResonatorABCParams::GetIDC}) {
        EXPECT_EQ((abc.Get()->*get)(&id), E_FAIL);
    }
    EXPECT_EQ(id, 77);
}

TEST(ResonatorParamsTest, AViewFindsTheWayBackToItsPacket) {
    const auto packet = NewPacket();
    const auto info = Parallel<ITTSResonatorStructInfo>(packet, 0);
    ComPtr<ILarynthParams> found;
    EXPECT_EQ(info->QueryPacketInterface(found.Id(), found.PutUnknown()), S_OK);
    EXPECT_EQ(found.Get(), packet.Get());
    EXPECT_EQ(info->QueryPacketInterface(IID_ITTSResonatorFBParams, found.PutUnknown()), E_NOINTERFACE);
}

}  // namespace larynth::test
