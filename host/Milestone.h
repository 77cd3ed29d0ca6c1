// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>

#include <larynth/Packet.h>

#include "host/ClientObject.h"

namespace larynth {

/// An item of a stream that makes no sound and tells when the synthesizer gets there.
///
/// Calculate renders a whole stream in one call. It passes over items that are neither packet nor holder, but
/// asks each of them whether it is a packet: what stands in front of it has been rendered then.
class Milestone final : public ClientObject<IUnknown> {
  public:
    explicit Milestone(std::function<void()> reached) : reached_(std::move(reached)) {}

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        if (riid == IID_ILarynthParams) reached_();
        return ClientObject::QueryInterface(riid, ppv);
    }

  private:
    std::function<void()> reached_;
};

}  // namespace larynth
