// SPDX-License-Identifier: MIT
#include "tests/packet/Packet.h"
#include "tests/support/Allocations.h"
#include "tests/support/ForwardingOuter.h"

namespace larynth::test {
namespace {

template <class Interface>
void ExpectScalar(HRESULT (Interface::*set)(double), HRESULT (Interface::*get)(double*),
                  HRESULT (Interface::*getId)(int*), int id) {
    const auto face = NewPacket<Interface>();
    EXPECT_EQ(Get(face, getId), id);
    EXPECT_EQ(Code((face.Get()->*set)(-2.5)), "S_OK") << id;
    EXPECT_EQ(std::pair(Get(face, get), ItemValue(face, id)), std::pair(-2.5, -2.5)) << id;
}
#define EXPECT_SCALAR(Interface, X, id) \
    ExpectScalar(&Interface::Set##X, &Interface::Get##X, &Interface::GetID##X, id)

TEST(Packet, ScalarsAreTheItemsThatTheirIdsName) {
    EXPECT_SCALAR(ILarynthVoiceParams, F0, 0);
    EXPECT_SCALAR(ILarynthVoiceParams, OQ, 1);
    EXPECT_SCALAR(ILarynthVoiceParams, FL, 2);
    EXPECT_SCALAR(ILarynthVoiceParams, FLT, 3);
    EXPECT_SCALAR(ILarynthVoiceParams, DI, 4);
    EXPECT_SCALAR(ILarynthVoiceParams, TL, 5);
    EXPECT_SCALAR(ILarynthVoiceParams, AV, 6);
    EXPECT_SCALAR(ILarynthAspirationParams, AH, 7);
    EXPECT_SCALAR(ILarynthFricationParams, AF, 8);
    EXPECT_SCALAR(ILarynthParallelTractParams, AB, 9);
}

TEST(Packet, EachTractHasItsOwnSections) {
    const auto cascade = NewPacket<ILarynthVocalTractParams>();
    const auto parallel = As<ILarynthParallelTractParams>(cascade);
    EXPECT_EQ(Get(cascade, &ILarynthVocalTractParams::GetResonatorsCount), 6);
    EXPECT_EQ(Get(cascade, &ILarynthVocalTractParams::GetAntiResonatorsCount), 1);
    EXPECT_EQ(Get(parallel, &ILarynthParallelTractParams::GetResonatorsCount), 7);

    IUnknown* view = nullptr;
    for (const HRESULT outside :
         {cascade->GetResonator(-1, &view, IID_IUnknown), cascade->GetResonator(6, &view, IID_IUnknown),
          cascade->GetAntiResonator(-1, &view, IID_IUnknown),
          cascade->GetAntiResonator(1, &view, IID_IUnknown), parallel->GetResonator(-1, &view, IID_IUnknown),
          parallel->GetResonator(7, &view, IID_IUnknown)})
        EXPECT_EQ(Code(outside), "E_FAIL");
}

TEST(Packet, LivesAsLongAsAViewOfIt) {
    auto packet = NewPacket();
    const auto view = Cascade(packet, 2);
    EXPECT_EQ(References(packet.Get()), 2U);
    packet.Release();
    view->SetFreq(700.0);
    ComPtr<ILarynthParams> found;
    As<ITTSResonatorStructInfo>(view)->QueryPacketInterface(found.Id(), found.PutUnknown());
    ASSERT_TRUE(found);
    EXPECT_EQ(Get(Cascade(found, 2), &ITTSResonatorFBParams::GetFreq), 700.0);

    ForwardingOuter whole;
    whole.part.Query(&MakeObject<LarynthParams>(&whole)->Inner());
    {
        const auto ofPart = Cascade<ITTSResonatorStructInfo>(whole.part, 0);
        EXPECT_EQ(whole.references, 1);
        ComPtr<IUnknown> owner;
        ofPart->QueryPacketInterface(IID_IUnknown, owner.Put());
        EXPECT_EQ(owner.Get(), &whole);
    }
}

TEST(Packet, ACloneIsADeepCopy) {
    auto source = NewPacket();
    for (int index = 0; index < 52; ++index)
        As<ITTSDoublePacket>(source)->SetItemValue(index, 1000.0 + index);
    source->SetFrameLen(80);
    Cascade<ITTSResonatorABCParams>(source, 1)->SetA(0.5);  // B = C = 0: a plain gain
    Cascade(source, 3)->SetState(5);
    As<ILarynthVocalTractFilterParams>(source)->SetBeta(2, 0.75);  // the filter data are the valid ones
    unsigned short words[41] = {1, 2, 3};
    As<ITTSTruKlattParams>(source)->SetTruPacket(words, 0);

    ComPtr<ITTSDoublePacket> copy;
    ASSERT_EQ(Code(As<IACLClone>(source)->Clone(copy.Id(), copy.PutUnknown())), "S_OK");
    EXPECT_EQ(Validity(copy), std::pair(0, 2));
    words[0] = 99;
    EXPECT_EQ(Code(As<ITTSTruKlattParams>(copy)->GetTruPacket(words, 0)), "S_OK");
    EXPECT_EQ(words[0], 1);
    copy->SetItemValue(0, 3.0);
    EXPECT_EQ(ItemValue(source, 0), 1000.0);
    source.Release();
    for (int index = 1; index < 52; ++index) EXPECT_EQ(ItemValue(copy, index), 1000.0 + index);
    EXPECT_EQ(Get(As<ILarynthParams>(copy), &ILarynthParams::GetFrameLen), 80);
    EXPECT_EQ(Get(Cascade(copy, 3), &ITTSResonatorFBParams::GetState), 5);
    EXPECT_EQ(Get(Cascade(copy, 1), &ITTSResonatorFBParams::GetGain), 0.5) << "each entry keeps its form";
    using Filter = ILarynthVocalTractFilterParams;
    EXPECT_EQ(Get(As<Filter>(copy), &Filter::GetBeta, 2), 0.75);
}

// The samples of whole packets, odd words among them, are golden.
TEST(Packet, WordsStayAsTheyWereSet) {
    const auto packet = NewPacket<ITTSTruKlattParams>();
    std::array<unsigned short, 41> words{}, stored{};
    EXPECT_EQ(Code(packet->GetTruPacket(words.data(), 1)), "E_FAIL");
    EXPECT_EQ(Code(packet->ConvertFromTru()), "E_FAIL");

    for (std::size_t k = 0; k < 41; ++k) words[k] = static_cast<unsigned short>(65535 - k);
    words[31] = 0;
    words[32] = 147;
    EXPECT_EQ(Code(packet->SetTruPacket(words.data(), 0)), "S_OK");
    EXPECT_EQ(ItemValue(packet, 0), 100.0) << "not converted";
    EXPECT_EQ(Code(packet->ConvertFromTru()), "S_OK");
    EXPECT_EQ(ItemValue(packet, 0), 150.0);
    EXPECT_EQ(Code(packet->ConvertToTru()), "S_OK");
    EXPECT_EQ(Code(packet->GetTruPacket(stored.data(), 1)), "S_OK");
    EXPECT_EQ(stored, words);
}

TEST(Packet, WhatFailsLeavesNothingBehind) {
    const auto packet = NewPacket<IACLClone>();
    const auto tract = As<ILarynthVocalTractParams>(packet);
    const ULONG references = References(packet.Get());
    const LONG locks = ModuleLock::Count();
    IUnknown* object = nullptr;
    EXPECT_EQ(Code(packet->Clone(IID_IClassFactory, &object)), "E_NOINTERFACE");
    EXPECT_EQ(Code(tract->GetResonator(0, &object, IID_ITTSAntiResonatorFBParams)), "E_NOINTERFACE");
    {
        const AllocationFailure noMemory(1);
        EXPECT_EQ(Code(tract->GetResonator(0, &object, IID_IUnknown)), "E_FAIL");
        EXPECT_TRUE(noMemory.Happened());
    }
    EXPECT_EQ(References(packet.Get()), references);
    EXPECT_EQ(ModuleLock::Count(), locks);
    EXPECT_EQ(Code(packet->Copy(packet.Get())), "E_FAIL");
}

}  // namespace
}  // namespace larynth::test
