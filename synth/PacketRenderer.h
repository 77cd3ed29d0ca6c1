// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Streams.h>

#include "engine/Network.h"

namespace larynth {

class CurrentVoice;
class LarynthParams;
class OutputStage;
class Roles;
struct SignalRows;

/// Turns one packet into one sample block.
class PacketRenderer {
  public:
    PacketRenderer(Roles& roles, OutputStage& output, CurrentVoice& voice) noexcept
        : roles_(roles), output_(output), voice_(voice) {}

    /// A new block with the packet's samples and `attached` (or none) as its object. Raises ComException with
    /// the code of the first call that fails, E_FAIL for an empty mandatory role or a negative frame length,
    /// CKlattException for a sample frequency that is not above 0; the components may then have received the
    /// packet. With `signals` these are written as well, and the codes of SignalRows and E_NOTIMPL for a
    /// network with foreign components are raised.
    ComPtr<ITTSSoundData> Render(ILarynthParams* packet, IUnknown* attached,
                                 const SignalRows* signals = nullptr);

  private:
    using OwnElements = std::optional<Network::Elements>;

    /// Hands over a packet of ours to a network of ours as a frame: no partner is called, so that the network
    /// stays what it is. Nothing, with nothing done, for any other network.
    OwnElements TakeAsFrame(LarynthParams& packet);

    void RenderInto(ITTSSoundData& block, const OwnElements& own, const SignalRows* signals,
                    std::span<std::int16_t> staging);
    /// In stretches when every component is this module's own, else one by one through the interfaces.
    void RenderSamples(const OwnElements& own, std::span<std::int16_t> samples);
    void RenderSignals(const Network::Elements& own, const SignalRows& signals,
                       std::span<std::int16_t> samples);
    /// Apart from what ends the lease of draws, which would cost the loop its registers.
    [[gnu::noinline]] void RenderOneByOne(std::span<std::int16_t> samples);
    void RenderInStretches(const Network::Elements& own, std::span<std::int16_t> samples) noexcept;

    Network network_;
    Roles& roles_;
    OutputStage& output_;
    CurrentVoice& voice_;
};

}  // namespace larynth
