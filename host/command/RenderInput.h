// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include <larynth/Speech.h>

namespace larynth {

/// The frames of an utterance, one after the other, in one of the forms that the command reads.
class RenderInput {
  public:
    RenderInput() = default;
    RenderInput(const RenderInput&) = delete;
    RenderInput& operator=(const RenderInput&) = delete;
    virtual ~RenderInput() = default;

    /// Moves to the next frame; false behind the last one. Raises InputError.
    virtual bool Next() = 0;

    // Of the frame that Next moved to:
    virtual int Length() const = 0;                 ///< Samples.
    virtual const std::string& Marker() const = 0;  ///< In front of the frame; empty: none.
    virtual std::string Place() const = 0;          ///< For messages.
    virtual double SampleFreq() const = 0;  ///< Hz; the same for all frames, also behind the last one.
    /// Its samples, valid until the synthesizer renders again.
    virtual std::span<const std::int16_t> Render(Synthesizer& synthesizer) const = 0;
};

/// Frames by their items.
class FrameInput final : public RenderInput {
  public:
    explicit FrameInput(FrameReader frames) : frames_(std::move(frames)) {}

    bool Next() override { return frames_.Next(); }
    int Length() const override { return frames_.Frame().length; }
    const std::string& Marker() const override { return frames_.Marker(); }
    std::string Place() const override { return frames_.Place(); }
    double SampleFreq() const override { return frames_.SampleFreq(); }
    std::span<const std::int16_t> Render(Synthesizer& synthesizer) const override {
        return synthesizer.RenderChunk(frames_.Frame());
    }

  private:
    FrameReader frames_;
};

/// One frame as 41 words of 16 bits.
using PacketWords = std::array<unsigned short, 41>;

/// Fixed-point packets back to back, 82 bytes each, little-endian, which are converted and have the length
/// that the conversion sets. There may be none.
class PacketInput final : public RenderInput {
  public:
    /// For sounds of `sampleFreq` (Hz), or of what a table without one has. The input must live as long as
    /// this object.
    PacketInput(std::istream& input, std::string fileName, std::optional<double> sampleFreq);

    bool Next() override;
    int Length() const override { return length_; }
    const std::string& Marker() const override { return noMarker_; }
    std::string Place() const override { return fileName_ + ": packet " + std::to_string(number_); }
    double SampleFreq() const override { return sampleFreq_; }
    std::span<const std::int16_t> Render(Synthesizer& synthesizer) const override;

  private:
    ComPtr<ILarynthParams> MakePacket() const;

    std::istream& input_;
    std::string fileName_, noMarker_;
    double sampleFreq_;
    int length_ = 0;  // of every packet
    PacketWords words_{};
    std::uint64_t number_ = 0;  // of the packet, from 1
};

/// How much there is in an utterance.
struct Extent {
    std::uint64_t frames = 0, samples = 0;
    double sampleFreq = 0.0;  ///< Hz.
};

/// Reads all frames, and thereby finds whatever is wrong with them. Raises InputError.
Extent ExtentOf(RenderInput& frames);

}  // namespace larynth
