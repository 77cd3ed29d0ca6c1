// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Larynth.h>

#include "bench/Rendering.h"

namespace larynth::bench {

/// A packet with the frame's values.
ComPtr<ILarynthParams> MakePacket(const PlainFrame& frame);

/// Rendering by a synthesizer: a host's calls of Calculate, each block released when it has been looked at.
class ComponentRendering final : public Rendering {
  public:
    /// With `throughInterfaces` a component that is part of another object forces calls per sample.
    ComponentRendering(const Case& one, bool throughInterfaces);

    void Prepare(Samples* samples) override;
    /// One list is always rendered as a whole.
    void Render(std::size_t count, Samples* samples) override;

  private:
    using Packet = ComPtr<ILarynthParams>;

    void AddPacket(const PlainFrame& frame);
    void RenderPacket(const Packet& packet, Samples* samples);
    void RenderList(Samples* samples);

    const Case& case_;
    ComPtr<IACLIOProcess> synthesizer_;
    std::vector<Packet> lead_, packets_;
    ComPtr<ITTSObjectList> list_;
    std::vector<ComPtr<ITTSResonatorFBParams>> poles_;  // of all packets that are to be fresh
    std::vector<ComPtr<ITTSAntiResonatorFBParams>> zeros_;
};

}  // namespace larynth::bench
