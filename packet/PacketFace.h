// SPDX-License-Identifier: MIT
#pragma once

#include "com/OutPointer.h"
#include "packet/KlattPacketData.h"

namespace larynth {

/// Base of the packet's faces: each implements one interface over the values that all of them share. The
/// packet lists its faces and supplies the data once for all.
template <class PacketInterface>
class PacketFace : public PacketInterface {
  public:
    using Interface = PacketInterface;

  protected:
    virtual KlattPacketData& Data() noexcept = 0;

    HRESULT Store(ScalarItem item, double dValue) noexcept {
        Data().Scalar(item) = dValue;
        return S_OK;
    }
    HRESULT Read(ScalarItem item, double* pdValue) noexcept { return Put(pdValue, Data().Scalar(item)); }
    static HRESULT ReadID(ScalarItem item, int* pnID) noexcept { return Put(pnID, static_cast<int>(item)); }
};

}  // namespace larynth
