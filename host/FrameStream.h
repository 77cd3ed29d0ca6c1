// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include <larynth/Larynth.h>

#include "host/FrameTable.h"
#include "host/PacketFile.h"

namespace larynth {

/// The two forms of the cascade tract.
enum class TractForm { Resonator, Filter };

/// Called with the number of frames rendered so far.
using Progress = std::function<void(std::size_t)>;

/// An utterance as the synthesizer takes it: a list of packets, with a holder for every marker that contains
/// the packets up to the next marker.
class FrameStream {
  public:
    /// Raises ComponentFailure, like everything here.
    FrameStream();

    void AddMarker(const std::string& text);
    void AddPacket(IUnknown* packet);
    /// `reached` is called when everything added so far has been rendered. It must not raise.
    void AddMilestone(std::function<void()> reached);

    IUnknown* Get() const noexcept { return whole_.Get(); }

  private:
    ComPtr<ITTSObjectList> whole_;
    ComPtr<ITTSObjectList> open_;  // where the next packet goes: the whole, or the last marker's content
};

/// A stream with a packet of its own for every frame. With the filter form each packet also computes the
/// filter's coefficients.
FrameStream StreamOf(const FrameTable& table, TractForm form, const Progress& progress);
FrameStream StreamOf(const PacketFile& file, TractForm form, const Progress& progress);

}  // namespace larynth
