// SPDX-License-Identifier: MIT
#include "tests/support/Allocations.h"
#include "tests/packet/NewPacket.h"

namespace larynth::test {

TEST(PacketTest, TimingOfANewPacketAndAfterItWasSet) {
    const auto packet = NewPacket();
    EXPECT_EQ(Get(packet, &ILarynthParams::GetSampleFreq), 11025.0);
    EXPECT_EQ(Get(packet, &ILarynthParams::GetFrameLen), 0);

    EXPECT_EQ(packet->SetSampleFreq(22050.0), S_OK);
    EXPECT_DOUBLE_EQ(Get(packet, &ILarynthParams::GetSampleFreq), 22050.0);
    EXPECT_EQ(packet->SetSampleFreq(0.0), S_OK);
    EXPECT_EQ(Get(packet, &ILarynthParams::GetSampleFreq), 0.0);
    EXPECT_EQ(packet->SetFrameLen(-3), S_OK);
    EXPECT_EQ(Get(packet, &ILarynthParams::GetFrameLen), -3);
}

namespace {

template <class Interface>
void ExpectScalar(HRESULT (Interface::*set)(double), HRESULT (Interface::*get)(double*),
                  HRESULT (Interface::*getId)(int*), int id, double initial) {
    SCOPED_TRACE(id);
    const auto face = NewPacket<Interface>();
    EXPECT_EQ(Get(face, getId), id);
    EXPECT_EQ(Get(face, get), initial);
    EXPECT_EQ((face.Get()->*set)(-2.5), S_OK);
    EXPECT_EQ(Get(face, get), -2.5);
    EXPECT_EQ(ItemValue(As<ITTSDoublePacket>(face), id), -2.5);
}

}  // namespace

TEST(PacketTest, ScalarsAreTheItemsThatTheirIdsName) {
    using Voice = ILarynthVoiceParams;
    ExpectScalar(&Voice::SetF0, &Voice::GetF0, &Voice::GetIDF0, 0, 100.0);
    ExpectScalar(&Voice::SetOQ, &Voice::GetOQ, &Voice::GetIDOQ, 1, 0.5);
    ExpectScalar(&Voice::SetFL, &Voice::GetFL, &Voice::GetIDFL, 2, 0.0);
    ExpectScalar(&Voice::SetFLT, &Voice::GetFLT, &Voice::GetIDFLT, 3, 0.0);
    ExpectScalar(&Voice::SetDI, &Voice::GetDI, &Voice::GetIDDI, 4, 0.0);
    ExpectScalar(&Voice::SetTL, &Voice::GetTL, &Voice::GetIDTL, 5, 0.0);
    ExpectScalar(&Voice::SetAV, &Voice::GetAV, &Voice::GetIDAV, 6, 0.0);
    using Aspiration = ILarynthAspirationParams;
    ExpectScalar(&Aspiration::SetAH, &Aspiration::GetAH, &Aspiration::GetIDAH, 7, 30.0);
    using Frication = ILarynthFricationParams;
    ExpectScalar(&Frication::SetAF, &Frication::GetAF, &Frication::GetIDAF, 8, 1.0);
    using Bypass = ILarynthParallelTractParams;
    ExpectScalar(&Bypass::SetAB, &Bypass::GetAB, &Bypass::GetIDAB, 9, 0.0);
}

TEST(PacketTest, EachTractHasItsOwnResonators) {
    const auto packet = NewPacket();
    const auto cascade = As<ILarynthVocalTractParams>(packet);
    const auto parallel = As<ILarynthParallelTractParams>(packet);
    EXPECT_EQ(Get(cascade, &ILarynthVocalTractParams::GetResonatorsCount), 6);
    EXPECT_EQ(Get(cascade, &ILarynthVocalTractParams::GetAntiResonatorsCount), 1);
    EXPECT_EQ(Get(parallel, &ILarynthParallelTractParams::GetResonatorsCount), 7);
    EXPECT_EQ(Get(Cascade(packet, 0), &ITTSResonatorFBParams::GetFreq), 300.0);
    EXPECT_EQ(Get(Parallel(packet, 6), &ITTSResonatorFBParams::GetFreq), 4900.0);

    const ULONG references = References(packet.Get());
    ComPtr<IUnknown> view;
    for (const int index : {-1, 6}) {
        EXPECT_EQ(cascade->GetResonator(index, view.Put(), IID_ITTSResonatorFBParams), E_FAIL);
    }
    for (const int index : {-1, 1}) {
        EXPECT_EQ(cascade->GetAntiResonator(index, view.Put(), IID_ITTSAntiResonatorFBParams), E_FAIL);
    }
    for (const int index : {-1, 7}) {
        EXPECT_EQ(parallel->GetResonator(index, view.Put(), IID_ITTSResonatorFBParams), E_FAIL);
    }
    EXPECT_EQ(cascade->GetAntiResonator(0, view.Put(), IID_ITTSResonatorFBParams), E_NOINTERFACE);
    EXPECT_EQ(cascade->GetResonator(0, view.Put(), IID_ITTSAntiResonatorFBParams), E_NOINTERFACE);
    EXPECT_EQ(References(packet.Get()), references);
}

TEST(PacketTest, AViewKeepsItsPacketAlive) {
    auto packet = NewPacket();
    const ULONG references = References(packet.Get());
    auto view = Cascade(packet, 2);
    EXPECT_EQ(References(packet.Get()), references + 1);
    view.Release();
    EXPECT_EQ(References(packet.Get()), references);

    view = Cascade(packet, 2);
    const LONG locks = ModuleLock::Count();
    packet.Release();
    EXPECT_EQ(ModuleLock::Count(), locks);
    EXPECT_EQ(view->SetFreq(700.0), S_OK);
    ComPtr<ILarynthParams> found;
    EXPECT_EQ(As<ITTSResonatorStructInfo>(view)->QueryPacketInterface(found.Id(), found.PutUnknown()), S_OK);
    EXPECT_EQ(Get(Cascade(found, 2), &ITTSResonatorFBParams::GetFreq), 700.0);
    found.Release();
    view.Release();
    EXPECT_EQ(ModuleLock::Count(), locks - 2);
}

namespace {

/// An aggregate whose only part is a packet.
class Aggregate final : public ComObject<ITTSDecKlattParams> {
  public:
    Aggregate() : ComObject(nullptr), part_(MakeObject<LarynthParams>(this)) {}
    IUnknown& Part() noexcept { return part_->Inner(); }

  private:
    Created<LarynthParams> part_;
};

}  // namespace

TEST(PacketTest, AViewOfAPartKeepsTheWholeAlive) {
    auto* const whole = new Aggregate;
    {
        ComPtr<ILarynthVocalTractParams> tract;
        ASSERT_TRUE(tract.TryQuery(&whole->Part()));
        EXPECT_EQ(References(whole), 2u);
        ComPtr<ITTSResonatorStructInfo> view;
        EXPECT_EQ(tract->GetResonator(0, view.PutUnknown(), view.Id()), S_OK);
        EXPECT_EQ(References(whole), 3u);
        ComPtr<IUnknown> owner;
        EXPECT_EQ(view->QueryPacketInterface(IID_IUnknown, owner.Put()), S_OK);
        EXPECT_EQ(owner.Get(), whole);
    }
    EXPECT_EQ(whole->Inner().Release(), 0u);
}

TEST(PacketTest, ACloneIsADeepCopy) {
    auto source = NewPacket();
    auto items = As<ITTSDoublePacket>(source);
    for (int index = 0; index < 52; ++index) items->SetItemValue(index, 1000.0 + index);
    source->SetSampleFreq(16000.0);
    source->SetFrameLen(80);
    As<ILarynthVocalTractFilterParams>(source)->SetAlpha(11, 0.25);
    As<ILarynthVocalTractFilterParams>(source)->SetBeta(2, 0.75);  // the filter data are the valid ones
    Cascade(source, 3)->SetState(5);
    unsigned short words[41] = {1, 2, 3};
    As<ITTSTruKlattParams>(source)->SetTruPacket(words, 0);

    ComPtr<ITTSDoublePacket> copy;
    ASSERT_EQ(As<IACLClone>(source)->Clone(copy.Id(), copy.PutUnknown()), S_OK);
    EXPECT_EQ(Validity(copy), std::pair(0, 2));
    Cascade(copy, 0)->SetFreq(1.0);
    Zero(copy)->SetGain(2.0);
    copy->SetItemValue(0, 3.0);
    words[0] = 99;
    EXPECT_EQ(As<ITTSTruKlattParams>(copy)->GetTruPacket(words, 0), S_OK);
    EXPECT_EQ(words[0], 1);
    words[0] = 99;
    As<ITTSTruKlattParams>(copy)->SetTruPacket(words, 0);

    EXPECT_EQ(Validity(source), std::pair(0, 2));
    for (int index = 0; index < 52; ++index) EXPECT_EQ(ItemValue(items, index), 1000.0 + index);
    EXPECT_EQ(As<ITTSTruKlattParams>(source)->GetTruPacket(words, 0), S_OK);
    EXPECT_EQ(words[0], 1);

    items.Release();
    source.Release();
    for (int index = 0; index < 52; ++index) {
        const double changed = index == 0 ? 3.0 : index == 10 ? 1.0 : index == 30 ? 2.0 : 1000.0 + index;
        EXPECT_EQ(ItemValue(copy, index), changed);
    }
    EXPECT_EQ(Get(As<ILarynthParams>(copy), &ILarynthParams::GetFrameLen), 80);
    EXPECT_EQ(Get(As<ILarynthParams>(copy), &ILarynthParams::GetSampleFreq), 16000.0);
    EXPECT_EQ(Get(Cascade(copy, 3), &ITTSResonatorFBParams::GetState), 5);
    double alpha = 0.0, beta = 0.0;
    EXPECT_EQ(As<ILarynthVocalTractFilterParams>(copy)->GetAlpha(11, &alpha), S_OK);
    EXPECT_EQ(As<ILarynthVocalTractFilterParams>(copy)->GetBeta(2, &beta), S_OK);
    EXPECT_EQ(alpha, 0.25);
    EXPECT_EQ(beta, 0.75);
}

TEST(PacketTest, ACloneKeepsTheFormOfEachEntry) {
    const auto source = NewPacket();
    Cascade<ITTSResonatorABCParams>(source, 1)->SetA(0.5);  // B = C = 0: a plain gain
    ComPtr<ILarynthParams> copy;
    ASSERT_EQ(As<IACLClone>(source)->Clone(copy.Id(), copy.PutUnknown()), S_OK);
    EXPECT_EQ(Get(Cascade(copy, 1), &ITTSResonatorFBParams::GetGain), 0.5);
    EXPECT_EQ(ItemValue(As<ITTSDoublePacket>(source), 15), 1.0) << "converted in the source";
}

TEST(PacketTest, WhatCannotBeClonedLeavesNothingBehind) {
    const auto packet = NewPacket<IACLClone>();
    const LONG locks = ModuleLock::Count();
    ComPtr<IUnknown> copy;
    EXPECT_EQ(packet->Clone(IID_IClassFactory, copy.Put()), E_NOINTERFACE);
    {
        const AllocationFailure noMemory(1);
        EXPECT_EQ(packet->Clone(IID_IUnknown, copy.Put()), E_FAIL);
        EXPECT_TRUE(noMemory.Happened());
    }
    EXPECT_EQ(ModuleLock::Count(), locks);
    EXPECT_EQ(packet->Copy(nullptr), E_FAIL);
    EXPECT_EQ(packet->Copy(packet.Get()), E_FAIL);
}

TEST(PacketTest, WithoutMemoryThereIsNoView) {
    const auto tract = NewPacket<ILarynthVocalTractParams>();
    const ULONG references = References(tract.Get());
    const AllocationFailure noMemory(1);
    ComPtr<IUnknown> view;
    EXPECT_EQ(tract->GetResonator(0, view.Put(), IID_ITTSResonatorFBParams), E_FAIL);
    EXPECT_TRUE(noMemory.Happened());
    EXPECT_EQ(References(tract.Get()), references);
}

}  // namespace larynth::test
