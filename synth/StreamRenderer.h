// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/Streams.h>

namespace larynth {

class CurrentVoice;
class PacketRenderer;

/// Renders lists and holders into one flat output list: for each packet its block, for each holder a sync
/// element that carries the holder's object, in input order, nested ones in place. A voice that was set
/// directly is announced in front of the next holder's sync element. Items of other kinds produce nothing.
///
/// Every method raises ComException with the first failing code, E_FAIL for holders nested deeper than
/// kMostNested: a holder may contain itself.
class StreamRenderer {
  public:
    /// With `packetSyncPoints` every block carries its packet as attached object.
    StreamRenderer(PacketRenderer& packets, CurrentVoice& voice, const bool& packetSyncPoints,
                   ITTSObjectList& output) noexcept
        : packets_(packets), voice_(voice), packetSyncPoints_(packetSyncPoints), output_(output) {}

    void RenderList(ITTSObjectList* list);
    void RenderHolder(ITTSSyncHolder* holder);

  private:
    static constexpr int kMostNested = 256;

    void RenderItem(IUnknown* item);

    PacketRenderer& packets_;
    CurrentVoice& voice_;
    const bool& packetSyncPoints_;  // the host may switch them while its list is read
    ITTSObjectList& output_;
    int nested_ = 0;  // holders around the current item
};

}  // namespace larynth
