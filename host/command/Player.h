// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace larynth {

/// A sound of one channel on the system's usual device, heard while it is made. All functions raise
/// std::runtime_error, which advises to write a file where there is no device.
class Player {
  public:
    /// `sampleFreq` in Hz.
    explicit Player(double sampleFreq);
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    ~Player();  ///< Falls silent at once, unless all was heard.

    /// Plays behind what came before; waits while the device has enough.
    void Append(std::span<const short> samples);
    /// Waits until everything was heard.
    void Finish();

  private:
    void* stream_ = nullptr;
};

}  // namespace larynth
