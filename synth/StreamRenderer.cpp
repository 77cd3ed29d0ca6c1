// SPDX-License-Identifier: MIT
#include "synth/StreamRenderer.h"

#include <utility>

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>

#include "com/Boundary.h"
#include "synth/CurrentVoice.h"
#include "synth/PacketRenderer.h"
#include "synth/SyncElement.h"

namespace larynth {

namespace {

using Zelvani::CheckResult;

/// Keeps a list locked while it is read; unlocks it on every path.
class ListLock {
  public:
    explicit ListLock(ITTSObjectList& list) : list_(&list) { CheckResult(list.Lock()); }
    ~ListLock() {
        if (list_ != nullptr) static_cast<void>(Guarded([this] { return list_->Unlock(); }));
    }
    ListLock(const ListLock&) = delete;
    ListLock& operator=(const ListLock&) = delete;

    /// Unlocks at the end of the reading, where a failure counts.
    void Unlock() { CheckResult(std::exchange(list_, nullptr)->Unlock()); }

  private:
    ITTSObjectList* list_;
};

}  // namespace

void StreamRenderer::RenderList(ITTSObjectList* list) {
    ListLock lock(*list);
    int count = 0;
    CheckResult(list->GetCount(&count));
    for (int i = 0; i < count; ++i) {
        ComPtr<IUnknown> item;
        CheckResult(list->GetItem(i, IID_IUnknown, item.PutUnknown()));
        RenderItem(item.Get());
    }
    lock.Unlock();
}

void StreamRenderer::RenderItem(IUnknown* item) {
    if (ComPtr<ILarynthParams> packet; packet.TryQuery(item)) {
        const ComPtr<ITTSSoundData> block =
            packets_.Render(packet.Get(), packetSyncPoints_ ? packet.Get() : nullptr);
        CheckResult(output_.Add(block.Get()));
    } else if (ComPtr<ITTSSyncHolder> holder; holder.TryQuery(item)) {
        RenderHolder(holder.Get());
    }
}

void StreamRenderer::RenderHolder(ITTSSyncHolder* holder) {
    if (nested_ == kMostNested) CheckResult(E_FAIL);
    ++nested_;
    ComPtr<ITTSObjectList> content;
    content.Query(holder);
    if (!content) CheckResult(E_FAIL);
    ComPtr<IUnknown> attached;
    holder->GetObject(IID_IUnknown, attached.PutUnknown());
    voice_.AdoptFrom(attached.Get());
    voice_.Announce(output_);
    CheckResult(AddSyncElement(output_, attached.Get()));
    RenderList(content.Get());
    --nested_;
}

}  // namespace larynth
