// SPDX-License-Identifier: MIT
#include "synth/PacketRenderer.h"

#include <algorithm>
#include <vector>

#include <larynth/Classes.h>
#include <larynth/ModuleRuntime.h>

#include "com/FlushDenormals.h"
#include "com/OwnObject.h"
#include "components/TTSVoicingSourceFilter.h"  // compilers then try our own filter first, and inline it
#include "engine/Exception.h"
#include "engine/NoiseGenerator.h"
#include "packet/LarynthParams.h"
#include "synth/CurrentVoice.h"
#include "synth/OutputStage.h"
#include "synth/Roles.h"
#include "synth/SignalTaps.h"

namespace larynth {

namespace {

constexpr int kFormat16Bit = 2;

/// Frames up to this length (samples) are staged on the stack, where the block's check of the samples'
/// address costs nothing.
constexpr std::size_t kUsualLength = 1024;

using Zelvani::CheckResult;

void SetUp(const ComPtr<ITTSSoundData>& block, IUnknown* attached) {
    CheckResult(block->SetFormat(kFormat16Bit));
    ComPtr<ITTSSyncHolder> holder;
    holder.Query(block.Get());
    if (!holder) CheckResult(E_FAIL);
    CheckResult(holder->SetObject(attached));
}

/// The result of filling a block is not examined. So a block of ours takes its memory while no sample is
/// lost.
void MakeRoom(const ComPtr<ITTSSoundData>& block, int count) {
    ComPtr<ILarynthSampleRoom> room;
    if (room.TryQuery(block.Get())) CheckResult(room->Reserve(count));
}

struct Timing {
    int frameLength = 0;      // samples
    double sampleFreq = 0.0;  // Hz
};

Timing ReadTiming(ILarynthParams* packet) {
    Timing timing;
    CheckResult(packet->GetFrameLen(&timing.frameLength));
    CheckResult(packet->GetSampleFreq(&timing.sampleFreq));
    if (!(timing.sampleFreq > 0.0)) throw Zelvani::CKlattException{2, 2, "Bad sample frequency"};
    if (timing.frameLength < 0) CheckResult(E_FAIL);
    return timing;
}

}  // namespace

ComPtr<ITTSSoundData> PacketRenderer::Render(ILarynthParams* packet, IUnknown* attached,
                                             const SignalRows* signals) {
    const Roles::Rendering rendering(roles_);
    ComPtr<ITTSSoundData> block;
    CheckResult(block.Create(CLSID_TTSSoundData));
    SetUp(block, attached);
    voice_.AdoptFrom(attached);
    if (!roles_.Complete()) CheckResult(E_FAIL);
    LarynthParams* const ownPacket = OwnObject<LarynthParams>::Find(packet);
    OwnElements own = ownPacket != nullptr ? TakeAsFrame(*ownPacket) : OwnElements();
    if (!own) roles_.SetParams(packet);

    const Timing timing = ReadTiming(packet);
    MakeRoom(block, timing.frameLength);
    output_.SetSampleFreq(timing.sampleFreq);
    if (!roles_.Complete()) CheckResult(E_FAIL);  // the packet, or a component, may have called the host
    if (ownPacket == nullptr) own = roles_.OwnElements();
    if (signals != nullptr) {
        if (!own) CheckResult(E_NOTIMPL);
        signals->RequireRoomFor(timing.frameLength);
    }
    const auto count = static_cast<std::size_t>(timing.frameLength);
    if (count <= kUsualLength) {
        std::int16_t staging[kUsualLength];
        RenderInto(*block.Get(), own, signals, std::span(staging, count));
    } else {
        std::vector<std::int16_t> staging(count);
        RenderInto(*block.Get(), own, signals, staging);
    }
    return block;
}

PacketRenderer::OwnElements PacketRenderer::TakeAsFrame(LarynthParams& packet) {
    const OwnElements elements = roles_.OwnElements();
    if (elements) elements->Take(packet.Values().Converted(elements->Sections()));
    return elements;
}

void PacketRenderer::RenderInto(ITTSSoundData& block, const OwnElements& own, const SignalRows* signals,
                                std::span<std::int16_t> staging) {
    if (signals != nullptr) {
        RenderSignals(*own, *signals, staging);
    } else {
        RenderSamples(own, staging);
    }
    block.AppendSamples(kFormat16Bit, staging.data(), static_cast<int>(staging.size()));
}

void PacketRenderer::RenderSamples(const OwnElements& own, std::span<std::int16_t> samples) {
    if (samples.empty()) return;
    const FlushDenormals whileRendering;
    if (own) {
        RenderInStretches(*own, samples);
    } else {
        const LeasedDraws leased(*LarynthNoise());
        RenderOneByOne(samples);
    }
}

void PacketRenderer::RenderSignals(const Network::Elements& own, const SignalRows& signals,
                                   std::span<std::int16_t> samples) {
    const FlushDenormals whileRendering;
    const LeasedDraws leased(*LarynthNoise());
    SignalTaps(own, output_, signals).Render(samples);
}

void PacketRenderer::RenderOneByOne(std::span<std::int16_t> samples) {
    unsigned changes = roles_.Changes();
    Roles::Called called = roles_.ToCall();
    for (std::int16_t& sample : samples) {
        sample = output_.Process(called.NextSample());
        if (roles_.Changes() != changes) {
            called = roles_.ToCall();
            changes = roles_.Changes();
        }
    }
}

void PacketRenderer::RenderInStretches(const Network::Elements& own,
                                       std::span<std::int16_t> samples) noexcept {
    while (!samples.empty()) {
        const auto sums = network_.Render(own, std::min(samples.size(), vector::kStretch));
        output_.Process(sums, samples.data());
        samples = samples.subspan(sums.size());
    }
}

}  // namespace larynth
