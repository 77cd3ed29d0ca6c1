// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Streams.h>

#include "block/PhaseTable.h"
#include "synth/BlockFactory.h"

namespace larynth {

class CurrentVoice;
class OutputStage;
class Roles;

/// Turns one packet into one sample block.
class PacketRenderer {
  public:
    PacketRenderer(Roles& roles, OutputStage& output, CurrentVoice& voice) noexcept
        : roles_(roles), output_(output), voice_(voice) {}

    /// A new block with the packet's samples and `attached` (or none) as its object. Raises ComException with
    /// the code of the first call that fails, E_FAIL for an empty mandatory role or a negative frame length,
    /// CKlattException for a sample frequency that is not above 0; the components may then have received the
    /// packet.
    ComPtr<ITTSSoundData> Render(ILarynthParams* packet, IUnknown* attached);

  private:
    void RenderInto(ITTSSoundData& block, std::span<std::int16_t> staging);
    /// In blocks when every component is this module's own, else sample by sample.
    void RenderSamples(std::span<std::int16_t> samples);

    BlockFactory blocks_;
    block::PhaseTable phases_;
    Roles& roles_;
    OutputStage& output_;
    CurrentVoice& voice_;
    std::vector<std::int16_t> staging_;  // for long frames
};

}  // namespace larynth
