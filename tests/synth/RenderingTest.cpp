// SPDX-License-Identifier: MIT
#include <limits>

#include "tests/synth/SynthFixture.h"

namespace larynth::test {
namespace {

class Rendering : public SynthFixture {};

TEST_F(Rendering, MixesTheComponentsOfASampleInTheirOrder) {
    Initialize();
    // (voicing 0 ×2 + aspiration 10) ×3 + frication 100 ×5
    EXPECT_EQ(Render(Packet(2)), (std::vector<short>{530, 530}));
    const auto first = std::find(script.log.begin(), script.log.end(), "voicing");
    EXPECT_EQ(
        std::vector<std::string>(first, first + 6),
        (std::vector<std::string>{"voicing", "aspiration", "frication", "filter", "cascade", "parallel"}));
}

TEST_F(Rendering, HandsThePacketToTheComponentsInOrder) {
    Initialize();
    Render(Packet(0));
    std::vector<std::string> order;
    std::copy_if(script.log.begin(), script.log.end(), std::back_inserter(order),
                 [](const std::string& call) { return call.ends_with("SetParams"); });
    EXPECT_EQ(order,
              (std::vector<std::string>{"voicing.SetParams", "cascade.SetParams", "parallel.SetParams",
                                        "aspiration.SetParams", "frication.SetParams", "filter.SetParams"}));
}

TEST_F(Rendering, NeedsInitialization) {
    const auto packet = Packet();
    ComPtr<IUnknown> output;
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), E_FAIL);
    Initialize();
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), S_OK);
    process->Uninitialize();
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), E_FAIL);
}

TEST_F(Rendering, RefusesWhatItCannotRender) {
    struct Row {
        const char* what;
        ComPtr<IUnknown> input;
        IID idOut;
        HRESULT expected;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Initialize();
    const auto other = ComPtr<IUnknown>::Adopt(new FakeTract<ITTSVocalTract>("other", 1.0));
    const auto unknown = [](auto pointer) { return ComPtr<IUnknown>::Adopt(pointer.Detach()); };
    const Row rows[] = {
        {"another output interface", unknown(Packet()), IID_IUnknown, E_FAIL},
        {"sample frequency 0", unknown(Packet(3, 0.0)), GUID_NULL, E_FAIL},
        {"negative sample frequency", unknown(Packet(3, -1.0)), GUID_NULL, E_FAIL},
        {"sample frequency not a number", unknown(Packet(3, nan)), GUID_NULL, E_FAIL},
        {"negative frame length", unknown(Packet(-1)), GUID_NULL, E_FAIL},
        {"no known kind of input", other, GUID_NULL, E_NOINTERFACE},
        {"a marker without content", ComPtr<IUnknown>::Adopt(static_cast<ITTSSoundData*>(new FakeBlock)),
         GUID_NULL, E_NOINTERFACE},
        {"a list asked for as nothing", unknown(List()), GUID_NULL, E_NOINTERFACE},
        {"nothing", {}, GUID_NULL, E_POINTER},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        IUnknown* output = row.input.Get();
        EXPECT_EQ(process->Calculate(row.input.Get(), GUID_NULL, row.idOut, &output), row.expected);
        EXPECT_EQ(output, nullptr);
    }
    EXPECT_EQ(process->Calculate(rows[0].input.Get(), GUID_NULL, GUID_NULL, nullptr), E_POINTER);
}

TEST_F(Rendering, RendersFramesOfAnyLength) {
    Initialize();
    for (int length : {0, 1, 500, 501, 100000}) {
        EXPECT_EQ(Render(Packet(length)), std::vector<short>(static_cast<std::size_t>(length), 530));
    }
}

TEST_F(Rendering, FailsWhileAMandatoryRoleIsEmpty) {
    Initialize();
    const auto packet = Packet();
    ComPtr<IUnknown> output;
    EXPECT_EQ(structure->SetVocalTract(packet.Get(), GUID_NULL), E_NOINTERFACE);
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), E_FAIL);
    EXPECT_FALSE(output);
    Initialize();  // fills the role again
    EXPECT_EQ(Calculate(packet.Get(), GUID_NULL, output), S_OK);
}

TEST_F(Rendering, SkipsAnEmptyVoicingFilter) {
    Initialize();
    structure->RemoveComponent(6);
    Render(Packet(1));
    EXPECT_EQ(Times("filter") + Times("filter.SetParams"), 0);
}

TEST_F(Rendering, AttachesThePacketOnlyWithSyncPointsOn) {
    Initialize();
    const auto packet = Packet();
    for (LONG on : {0, 1, -7, 0}) {
        attributes->SetPacketSyncPointState(on);
        ComPtr<IUnknown> output;
        ASSERT_EQ(Calculate(packet.Get(), IID_ITTSSoundData, output), S_OK);
        ComPtr<ITTSSyncHolder> holder;
        holder.Query(output.Get());
        ComPtr<ILarynthParams> attached;
        holder->GetObject(IID_ILarynthParams, attached.PutUnknown());
        EXPECT_EQ(attached.Get(), on != 0 ? packet.Get() : nullptr) << on;
    }
}

TEST_F(Rendering, AppliesOutputGainAndVolume) {
    Initialize();
    attributes->SetOutputGain(2.0);
    attributes->SetVolume(-0.5);
    double value = 0.0;
    EXPECT_EQ(attributes->GetOutputGain(&value), S_OK);
    EXPECT_EQ(value, 2.0);
    EXPECT_EQ(attributes->GetVolume(&value), S_OK);
    EXPECT_EQ(value, -0.5);
    EXPECT_EQ(attributes->GetVolume(nullptr), E_POINTER);
    EXPECT_EQ(Render(Packet(1)), std::vector<short>{-530});
}

/// A component that fades: each of its samples changes the synthesizer's volume.
class FadingNoise final : public FakeNoise<ITTSFricationSource> {
  public:
    explicit FadingNoise(ILarynthAttributes* attributes)
        : FakeNoise("frication", 100.0), attributes_(attributes) {}

    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) override {
        attributes_->SetVolume(volume_ += 1.0);
        return FakeNoise::CalculateNext(pdValue);
    }

  private:
    ILarynthAttributes* attributes_;
    double volume_ = 0.0;
};

TEST_F(Rendering, ASettingThatAComponentChangesActsOnTheSampleAtHand) {
    const auto noise = Adopt<ITTSFricationSource>(new FadingNoise(attributes.Get()));
    ASSERT_EQ(structure->SetFricationSource(noise.Get(), GUID_NULL), S_OK);
    Initialize();
    EXPECT_EQ(Render(Packet(3)), (std::vector<short>{530, 1060, 1590}));
}

}  // namespace
}  // namespace larynth::test
