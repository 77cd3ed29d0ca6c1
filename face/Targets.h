// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "face/FrameSource.h"

namespace larynth {

/// The frames between targets, one after the other.
class TargetFrames final : public FrameReader::Implementation {
  public:
    /// `name` serves messages; empty: none. Raises InputError.
    TargetFrames(std::span<const Target> targets, const FrameDefaults& defaults, std::string name);

    bool Next() override;
    double SampleFreq() const noexcept override { return sampleFreq_; }
    /// Frames in all.
    std::size_t Count() const noexcept {
        return static_cast<std::size_t>((length_ + frameLen_ - 1) / frameLen_);
    }
    std::string Place() const override { return name_ + ": frame " + std::to_string(number_); }

  private:
    /// The targets of one item in the order of time.
    struct Track {
        double KlattFrame::*value;
        std::vector<Target> targets;
        std::size_t next = 0;  // the first target that lies behind the frame
    };
    static double ValueAt(Track& track, double time);

    std::string name_;
    double sampleFreq_;  // Hz
    int frameLen_;       // samples
    std::vector<Track> tracks_;
    std::int64_t length_ = 0, position_ = 0;  // samples
    std::uint64_t number_ = 0;                // of the frame, from 1
};

}  // namespace larynth
