// SPDX-License-Identifier: MIT
#pragma once

#include <larynth/ComPtr.h>
#include <larynth/Streams.h>

namespace larynth {

/// Makes sample blocks. A look-up of their class takes locks that all threads share, and there is a block for
/// every packet: so the class is kept, but only while it can come from nowhere else than a loaded module. A
/// class object that the host offers is asked for each time and never held.
class BlockFactory {
  public:
    /// A new block. Raises ComException with the code of the look-up or the creation, E_FAIL for a success
    /// without object.
    ComPtr<ITTSSoundData> New();

    /// Gives the class back: it keeps the module loaded that it comes from.
    void Forget() noexcept { kept_.Release(); }

  private:
    HRESULT Create(ComPtr<ITTSSoundData>& block);

    ComPtr<IClassFactory> kept_;
};

}  // namespace larynth
