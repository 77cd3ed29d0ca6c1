// SPDX-License-Identifier: MIT
/// Components take the values of this system's own packet by a short road, which must leave the samples,
/// codes and states that the packet's interfaces leave. A packet that is part of another object is asked
/// through its interfaces: of two equal packets one is made a part.
#include <algorithm>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "components/OwnPacket.h"
#include "components/TTSAspirationSource.h"
#include "components/TTSFricationSource.h"
#include "components/TTSParallelTract.h"
#include "components/TTSVocalTractF.h"
#include "components/TTSVocalTractR.h"
#include "components/TTSVoicingSourceFilter.h"
#include "components/TTSVoicingSourceStd.h"
#include "components/TTSVoicingSourceWave.h"
#include "tests/components/FakeContainer.h"
#include "tests/packet/NewPacket.h"
#include "tests/support/Code.h"
#include "tests/support/ForwardingOuter.h"

namespace larynth::test {
namespace {

using Packet = ComPtr<ILarynthParams>;
using Values = std::vector<std::uint64_t>;  // as bits

void Note(Values& values, double value) {
    values.push_back(
        std::bit_cast<std::uint64_t>(std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value));
}

/// A component; a wave source with a waveform, a voicing filter behind a source that flutters.
template <class Class>
struct Subject {
    Subject() {
        FakeSource wave({3.0, -1.0, 2.0, 5.0, -7.0});
        if constexpr (requires { object->LoadProperties(&wave); }) object->LoadProperties(&wave);
        if constexpr (requires { object->SetVoicingSource(nullptr, GUID_NULL); })
            object->SetVoicingSource(&source->Inner(), GUID_NULL);
    }
    HRESULT SetParams(const Packet& packet) {
        source->SetParams(packet.Get(), GUID_NULL);
        return object->SetParams(packet.Get(), GUID_NULL);
    }
    Values Samples() {
        Values samples;
        for (int i = 0; i < 30; ++i) {
            double sample = 0.0, input = 0.0;
            source->CalculateNext(&input);
            if constexpr (requires { object->CalculateNext(input, &sample); }) {
                object->CalculateNext(input, &sample);
            } else {
                object->CalculateNext(&sample);
            }
            Note(samples, sample);
        }
        return samples;
    }

    Created<TTSVoicingSourceStd> source = MakeObject<TTSVoicingSourceStd>();
    Created<Class> object = MakeObject<Class>();
};

/// A random change, the same for every packet: through a view, an item or a face; or a reading that converts.
auto RandomChange(std::mt19937& random) {
    const auto pick = [&](std::initializer_list<double> of) { return of.begin()[random() % of.size()]; };
    const auto kind = random() % 8;
    const int index = static_cast<int>(random() % 6), item = static_cast<int>(random() % kItemCount);
    const double F = pick({0.0, 90.0, 300.0, 1200.0, 2500.0, -80.0}), BW = pick({0.0, 60.0, 200.0, 900.0});
    const double gain = pick({0.0, 0.1, 0.7, -0.4}), fs = pick({8000.0, 11025.0, 22050.0});
    return [=](const Packet& packet) {
        double read = 0.0;
        if (kind == 0) packet->SetSampleFreq(fs);
        if (kind == 1) Cascade(packet, index)->SetFreq(F);
        if (kind == 2) Cascade(packet, index)->SetBW(BW);
        if (kind == 3) Cascade<ITTSResonatorABCParams>(packet, index)->SetC(-gain * gain);
        if (kind == 4) Cascade<ITTSResonatorABCParams>(packet, index)->GetA(&read);
        if (kind == 5) Parallel(packet, index)->SetGain(gain), Parallel(packet, index)->SetFreq(F);
        if (kind == 6)
            Zero(packet)->SetFreq(F), As<ILarynthVocalTractFilterParams>(packet)->ConvertToFilter();
        if (kind != 7) return;
        const auto items = As<ITTSDoublePacket>(packet);
        items->SetItemValue(item, item < kScalarCount ? gain : BW);
        items->SetItemValue(static_cast<int>(ScalarItem::F0), F);
        items->SetItemValue(static_cast<int>(ScalarItem::TL), BW / 30.0);
        As<ILarynthVocalTractFilterParams>(packet)->SetAlpha(index, gain / 4.0);
    };
}

template <class ABC, class FB>
void NoteForms(Values& shown, const ABC& abc, const FB& fb) {
    double a = 0.0, b = 0.0, c = 0.0, F = 0.0, BW = 0.0, G = 0.0;
    abc->GetA(&a), abc->GetB(&b), abc->GetC(&c), fb->GetFreq(&F), fb->GetBW(&BW), fb->GetGain(&G);
    for (const double value : {a, b, c, F, BW, G}) Note(shown, value);
}

/// Everything that a packet shows of itself: storage first, as reading the forms converts.
Values Shown(const Packet& packet) {
    Values shown;
    for (int i = 0; i < kItemCount; ++i) Note(shown, ItemValue(As<ITTSDoublePacket>(packet), i));
    Note(shown, Validity(packet).first * 8 + Validity(packet).second);
    for (int i = 0; i < 6; ++i)
        NoteForms(shown, Cascade<ITTSResonatorABCParams>(packet, i), Cascade(packet, i));
    for (int i = 0; i < 7; ++i)
        NoteForms(shown, Parallel<ITTSResonatorABCParams>(packet, i), Parallel(packet, i));
    NoteForms(shown, Zero<ITTSAntiResonatorABCParams>(packet), Zero(packet));
    return shown;
}

template <class Class>
class OwnPacket : public testing::Test {};
using Classes =
    testing::Types<TTSVoicingSourceStd, TTSVoicingSourceWave, TTSVoicingSourceFilter, TTSVocalTractR,
                   TTSVocalTractF, TTSParallelTract, TTSAspirationSource, TTSFricationSource>;
TYPED_TEST_SUITE(OwnPacket, Classes);

TYPED_TEST(OwnPacket, LeavesWhatTheInterfacesLeave) {
    constexpr int kUtterances = 40, kFrames = 12;
    std::mt19937 random(5);
    int sounding = 0;
    for (int utterance = 0; utterance < kUtterances; ++utterance) {
        Subject<TypeParam> shortRoad, interfaces;
        ForwardingOuter outer;
        outer.part.Query(&MakeObject<LarynthParams>(&outer)->Inner());
        const Packet own = NewPacket(), part = As<ILarynthParams>(outer.part);
        ASSERT_NE(OwnPacketValues(own.Get()), nullptr);
        ASSERT_EQ(OwnPacketValues(part.Get()), nullptr);
        for (const Packet& packet : {own, part}) {
            const auto voice = As<ILarynthVoiceParams>(packet);
            voice->SetAV(500.0), voice->SetFL(0.2), voice->SetFLT(9.07);
            As<ILarynthVocalTractFilterParams>(packet)->SetBeta(0, 1.0);
        }
        for (int frame = 0; frame < kFrames; ++frame) {
            for (auto changes = random() % 5; changes > 0; --changes) {
                const auto change = RandomChange(random);
                change(own), change(part);
            }
            ASSERT_EQ(Code(shortRoad.SetParams(own)), Code(interfaces.SetParams(part)));
            const std::uint32_t noise = *LarynthNoiseState();
            const Values samples = shortRoad.Samples();
            LarynthSeedNoise(noise);
            ASSERT_EQ(samples, interfaces.Samples()) << "frame " << frame << " of " << utterance;
            sounding += std::ranges::count(samples, samples[0]) < std::ssize(samples);
        }
        ASSERT_EQ(Shown(own), Shown(part)) << utterance;
    }
    EXPECT_GT(sounding, kUtterances * kFrames / 2) << "silence shows no difference";
}

}  // namespace
}  // namespace larynth::test
