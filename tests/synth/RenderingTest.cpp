// SPDX-License-Identifier: MIT

#include "com/FlushDenormals.h"
#include "tests/support/Numbers.h"
#include "tests/synth/Synth.h"

namespace larynth::test {
namespace {

using Calls = std::vector<std::string>;
class Rendering : public Synth {};

TEST_F(Rendering, HandsOutThePacketAndMixesEachSampleInOrder) {
    EXPECT_EQ(Render(Packet(1)), Shorts{530});
    EXPECT_EQ(script.calls, (Calls{"create", "voicing.SetParams", "cascade.SetParams", "parallel.SetParams",
                                   "aspiration.SetParams", "frication.SetParams", "filter.SetParams",
                                   "voicing", "aspiration", "frication", "filter", "cascade", "parallel"}));
    structure->RemoveComponent(6);
    script.Restart();
    Render(Packet(1));
    EXPECT_EQ(script.Times("filter") + script.Times("filter.SetParams"), 0) << "an empty filter is skipped";
}

TEST_F(Rendering, RefusesWhatItCannotRender) {
    const auto refuses = [&](const auto& input, const char* code, REFIID idOut = GUID_NULL) {
        IUnknown* output = input.Get();
        EXPECT_EQ(Code(process->Calculate(input.Get(), GUID_NULL, idOut, &output)), code);
        EXPECT_EQ(output, nullptr);
    };
    refuses(Packet(3), "E_FAIL", IID_IUnknown);
    refuses(Packet(-1), "E_FAIL");
    for (const double fs : {0.0, -1.0, kNan}) refuses(Packet(3, fs), "E_FAIL");
    refuses(List(), "E_NOINTERFACE");  // asked for as nothing
    refuses(ComPtr<IUnknown>(), "E_POINTER");
    EXPECT_EQ(Code(process->Calculate(Packet(3).Get(), GUID_NULL, GUID_NULL, nullptr)), "E_POINTER");
}

TEST_F(Rendering, NeedsInitializationAndEveryMandatoryRole) {
    const auto packet = Packet(3);
    ComPtr<IUnknown> output;
    EXPECT_EQ(Code(structure->SetVocalTract(packet.Get(), GUID_NULL)), "E_NOINTERFACE");
    EXPECT_EQ(Code(Calculate(packet.Get(), GUID_NULL, output)), "E_FAIL");
    script.Restart();
    process->Initialize(nullptr, GUID_NULL);
    EXPECT_EQ(script.calls, Calls{"create"}) << "only what is missing";
    EXPECT_EQ(Code(Calculate(packet.Get(), GUID_NULL, output)), "S_OK");
    process->Uninitialize();
    EXPECT_EQ(Code(Calculate(packet.Get(), GUID_NULL, output)), "E_FAIL");
}

TEST_F(Rendering, AttachesThePacketOnlyWithSyncPointsOn) {
    const auto packet = Packet(3);
    for (LONG on : {0, 1, -7, 0}) {
        attributes->SetPacketSyncPointState(on);
        ComPtr<IUnknown> output;
        ASSERT_EQ(Code(Calculate(packet.Get(), IID_ITTSSoundData, output)), "S_OK");
        ComPtr<ITTSSyncHolder> holder;
        holder.Query(output.Get());
        ComPtr<ILarynthParams> attached;
        holder->GetObject(IID_ILarynthParams, attached.PutUnknown());
        EXPECT_EQ(attached.Get(), on != 0 ? packet.Get() : nullptr) << on;
    }
}

TEST_F(Rendering, SettingsActAtOnce) {
    script.Do("frication", [&] { attributes->SetVolume(2.0); });
    EXPECT_EQ(Render(Packet(2)), (Shorts{1060, 1060})) << "from a component, on the sample at hand";
}

TEST_F(Rendering, AnswersAPartnerThatRaisesWithAFailure) {
    FakePacket packet(script, {{"FrameLen", 1}});
    ComPtr<IUnknown> output;
    for (const char* call : {"voicing.SetParams", "cascade.SetParams", "filter.SetParams", "voicing",
                             "parallel", "FrameLen", "create", "QueryInterface"}) {
        script.Throw(call);
        EXPECT_EQ(Code(Calculate(packet.Unknown(), GUID_NULL, output)), "E_FAIL") << call;
    }
    EXPECT_EQ(Code(structure->SetVoicingSource(source.Unknown(), GUID_NULL)), "E_FAIL");
}

TEST_F(Rendering, TakesDenormalsForZeroAndRestoresTheArithmetic) {
    const auto isFlushed = [] {
        volatile double least = 0x1p-1022;
        least = least * 0.5;  // stored: a compiler may compare in another mode
        return least == 0.0;
    };
    const auto canFlush = [&] {
        const FlushDenormals here;
        return isFlushed();
    };
    bool whileRendering = false;
    script.Do("frication", [&] { whileRendering = isFlushed(); });
    Render(Packet(1));
    EXPECT_EQ(whileRendering, canFlush());
    EXPECT_FALSE(isFlushed());
}

}  // namespace
}  // namespace larynth::test
