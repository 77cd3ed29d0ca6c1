// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include <larynth/Speech.h>

#include "host/Files.h"

namespace larynth {

/// What a reader of frames does for its form of file; raises BadInput and Error.
class FrameReader::Implementation {
  public:
    Implementation() = default;
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    virtual ~Implementation() = default;

    virtual bool Next() = 0;
    virtual double SampleFreq() const noexcept = 0;
    virtual std::string Place() const = 0;

    const KlattFrame& Frame() const noexcept { return frame_; }
    const std::string& Marker() const noexcept { return marker_; }

    /// The file that is read goes with its reader.
    void Own(std::unique_ptr<InputFile> file) { file_ = std::move(file); }

  protected:
    KlattFrame frame_;
    std::string marker_;

  private:
    std::unique_ptr<InputFile> file_;
};

}  // namespace larynth
