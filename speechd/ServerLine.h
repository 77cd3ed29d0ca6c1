// SPDX-License-Identifier: MIT
/// The line to the server: commands come on standard input; answers, events and sound go to standard output.
#pragma once

#include <cstdint>
#include <istream>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larynth::speechd {

/// What the server sends.
class CommandInput {
  public:
    /// The input must outlive this object.
    explicit CommandInput(std::istream& input) : input_(input) {}

    /// Nothing when the server is gone.
    std::optional<std::string> Line();
    /// The lines up to a dot that stands alone. A line that begins with a dot comes with one more.
    std::vector<std::string> Block();

  private:
    std::istream& input_;
};

/// What the server gets. Any thread may write; each call's bytes stay together. What cannot be written
/// because the server is gone is lost.
class EventOutput {
  public:
    explicit EventOutput(int descriptor) : descriptor_(descriptor) {}

    /// Whole lines, the last without its end.
    void Send(std::string_view lines);
    /// A mark that the sound has reached.
    void SendMark(const std::string& name);
    /// Sound of one channel, to be played behind what came before.
    void SendSound(std::span<const std::int16_t> samples, int sampleFreq);

  private:
    std::mutex mutex_;
    int descriptor_;
};

}  // namespace larynth::speechd
