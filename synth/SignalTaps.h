// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "engine/Network.h"
#include "synth/OutputStage.h"

namespace larynth {

/// The signals that a client can look at, in the order of their names.
enum class Signal : std::size_t {
    Voicing,
    TiltedVoicing,
    Aspiration,
    Frication,
    CascadeInput,
    CascadeZero,
    FirstCascadePole,
    ParallelBypass = FirstCascadePole + Frame::kCascadePoles,
    FirstParallelPole,
    Cascade = FirstParallelPole + Frame::kParallelPoles,
    Parallel,
    Sum,
    Gained,
    LowShelf,
    HighShelf,
    PreEmphasis,
    Output,
    Count
};

/// The names of all signals.
std::span<const std::string_view> SignalNames() noexcept;

/// A client's array: a row for each signal, one behind the other.
struct SignalRows {
    double* values;
    int rowLength;

    /// Raises E_INVALIDARG when a row is shorter than `count` samples, and E_POINTER for an array that cannot
    /// be written.
    void RequireRoomFor(int count) const;
};

/// Advances the elements of a voice and the output stage one by one, sample by sample, and writes down what
/// each has made.
class SignalTaps {
  public:
    SignalTaps(const Network::Elements& own, OutputStage& output, const SignalRows& rows) noexcept
        : own_(own), output_(output), rows_(rows) {}

    /// The rows have room for that many samples.
    void Render(std::span<std::int16_t> samples) noexcept;

  private:
    /// Writes the value of the sample at hand and returns it.
    double Put(Signal signal, double value, std::size_t further = 0) noexcept;

    double NextSum() noexcept;
    double NextVoicing() noexcept;
    void MoveSource() noexcept;
    double ThroughCascade(double x) noexcept;
    double ThroughParallel(double x) noexcept;

    const Network::Elements& own_;
    OutputStage& output_;
    SignalRows rows_;
    std::size_t at_ = 0;
};

}  // namespace larynth
