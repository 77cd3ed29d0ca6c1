// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include <larynth/Larynth.h>

#include "host/tables/FrameTable.h"
#include "host/tables/PacketFile.h"

namespace larynth {

/// The frames of an utterance, one after the other, in one of the forms that the command reads.
class FrameReader {
  public:
    FrameReader() = default;
    FrameReader(const FrameReader&) = delete;
    FrameReader& operator=(const FrameReader&) = delete;
    virtual ~FrameReader() = default;

    /// Moves to the next frame; false behind the last one. Raises BadInput.
    virtual bool Next() = 0;

    // Of the frame that Next moved to:
    virtual int Length() const = 0;          ///< Samples.
    virtual std::string Marker() const = 0;  ///< In front of the frame; empty: none.
    virtual std::string Place() const = 0;   ///< For messages.
    virtual double SampleFreq() const = 0;   ///< Hz; the same for all frames, also behind the last one.
    /// A packet of its own, in resonator form. Raises std::runtime_error.
    virtual ComPtr<ILarynthParams> MakePacket() const = 0;
};

/// The rows of a frame table.
class TableReader final : public FrameReader {
  public:
    TableReader(std::istream& input, std::string fileName, const ItemVocabulary& vocabulary,
                const FrameTableDefaults& defaults)
        : table_(input, std::move(fileName), vocabulary, defaults) {}

    bool Next() override { return table_.Next(); }
    int Length() const override { return table_.Frame().length; }
    std::string Marker() const override { return table_.Frame().marker; }
    std::string Place() const override;
    double SampleFreq() const override { return table_.SampleFreq(); }
    ComPtr<ILarynthParams> MakePacket() const override;

  private:
    FrameTableParser table_;
};

/// Fixed-point packets, which are converted and have the length that the conversion sets.
class PacketReader final : public FrameReader {
  public:
    /// For sounds of `sampleFreq` (Hz), or of what a table without one has.
    PacketReader(std::istream& input, std::string fileName, std::optional<double> sampleFreq);

    bool Next() override { return packets_.Next(); }
    int Length() const override { return length_; }
    std::string Marker() const override { return {}; }
    std::string Place() const override;
    double SampleFreq() const override { return sampleFreq_; }
    ComPtr<ILarynthParams> MakePacket() const override;

  private:
    PacketParser packets_;
    double sampleFreq_;
    int length_ = 0;  // of every packet
};

/// How much there is in an utterance.
struct Extent {
    std::uint64_t frames = 0, samples = 0;
    double sampleFreq = 0.0;  ///< Hz.
};

/// Reads all frames, and thereby finds whatever is wrong with them. Raises BadInput.
Extent ExtentOf(FrameReader& frames);

}  // namespace larynth
