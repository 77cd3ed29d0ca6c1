// SPDX-License-Identifier: MIT
#include "synth/PacketRenderer.h"

#include <larynth/Classes.h>

#include "engine/Exception.h"
#include "synth/CurrentVoice.h"
#include "synth/OutputStage.h"
#include "synth/Roles.h"

namespace larynth {

namespace {

constexpr int kFormat16Bit = 2;

using Zelvani::CheckResult;

ComPtr<ITTSSoundData> MakeBlock(IUnknown* attached) {
    ComPtr<ITTSSoundData> block;
    CheckResult(block.Create(CLSID_TTSSoundData));
    CheckResult(block->SetFormat(kFormat16Bit));
    ComPtr<ITTSSyncHolder> holder;
    holder.Query(block.Get());
    if (!holder) CheckResult(E_FAIL);
    CheckResult(holder->SetObject(attached));
    return block;
}

struct Timing {
    int frameLength = 0;      // samples
    double sampleFreq = 0.0;  // Hz
};

Timing ReadTiming(ILarynthParams* packet) {
    Timing timing;
    CheckResult(packet->GetFrameLen(&timing.frameLength));
    CheckResult(packet->GetSampleFreq(&timing.sampleFreq));
    if (!(timing.sampleFreq > 0.0)) throw CKlattException{2, 2, "Bad sample frequency"};
    if (timing.frameLength < 0) CheckResult(E_FAIL);
    return timing;
}

}  // namespace

ComPtr<ITTSSoundData> PacketRenderer::Render(ILarynthParams* packet, IUnknown* attached) {
    ComPtr<ITTSSoundData> block = MakeBlock(attached);
    voice_.AdoptFrom(attached);
    if (!roles_.Complete()) CheckResult(E_FAIL);
    roles_.SetParams(packet);

    const Timing timing = ReadTiming(packet);
    output_.SetSampleFreq(timing.sampleFreq);
    staging_.resize(static_cast<std::size_t>(timing.frameLength));
    for (std::int16_t& sample : staging_) sample = output_.Process(roles_.NextSample());
    block->AppendSamples(kFormat16Bit, staging_.data(), timing.frameLength);
    return block;
}

}  // namespace larynth
