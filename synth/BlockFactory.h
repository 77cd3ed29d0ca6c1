// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <larynth/ComPtr.h>
#include <larynth/Streams.h>

namespace larynth {

/// Makes sample blocks. The class is looked up once and again only when the process's class objects change: a
/// look-up takes locks that all threads share, and there is a block for every packet.
class BlockFactory {
  public:
    /// A new block. Raises ComException with the code of the look-up or the creation, E_FAIL for a success
    /// without object.
    ComPtr<ITTSSoundData> New();

    /// Gives the class back: it keeps the module loaded that it comes from.
    void Forget() noexcept { factory_.Release(); }

  private:
    void LookUp();

    ComPtr<IClassFactory> factory_;
    std::uint32_t changes_ = 0;  // of the process's class objects, when the factory was found
};

}  // namespace larynth
