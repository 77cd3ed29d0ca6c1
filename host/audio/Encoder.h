// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <span>

#include "host/audio/Sound.h"

namespace larynth {

/// Samples on their way into an output as a file with a header, by libsndfile. All functions raise
/// std::runtime_error. In a build without libsndfile there is no such file: the constructor raises BadInput.
class Encoder {
  public:
    /// Without output the bytes go nowhere.
    Encoder(OutputFile* output, AudioFormat format, int headerRate);
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;
    ~Encoder();

    void Append(std::span<const short> samples);
    void Finish();

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace larynth
