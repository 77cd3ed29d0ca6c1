// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <variant>

#include <larynth/Larynth.h>

#include "host/Synthesizer.h"
#include "host/audio/Sound.h"
#include "host/tables/FrameTable.h"
#include "host/tables/PacketFile.h"

namespace larynth {

/// What an input file holds, in one of the forms that the command reads.
using Utterance = std::variant<FrameTable, PacketFile>;

double SampleFreqOf(const Utterance& utterance);  ///< Hz.
std::size_t FrameCountOf(const Utterance& utterance);

/// Called with the number of frames rendered so far.
using Progress = std::function<void(std::size_t)>;

/// Frames on their way through a synthesizer, rendered in chunks of a few dozen packets. The synthesizer's
/// state runs on, so the sound is that of one long list, while only one chunk's packets are held. All
/// operations raise std::runtime_error.
class Rendering {
  public:
    /// The synthesizer must live as long as the rendering. `progress`, which may be empty, is called after
    /// every full chunk.
    Rendering(Synthesizer& synthesizer, Progress progress);

    /// In front of the next packet.
    void AddMarker(const std::string& text);
    /// A packet in resonator form; the filter form is computed where the tract takes that.
    void AddPacket(IUnknown* packet);
    /// The sound of everything added; to be called once.
    Sound Finish();

  private:
    void StartChunk();
    void RenderChunk();

    Synthesizer& synthesizer_;
    Progress progress_;
    ComPtr<ITTSObjectList> chunk_;  // packets, and a holder in front of a packet for its marker
    std::size_t frames_ = 0;
    Sound sound_;
};

/// An utterance as sound, from a packet of its own for every frame.
Sound Render(const Utterance& utterance, Synthesizer& synthesizer, const Progress& progress);

}  // namespace larynth
