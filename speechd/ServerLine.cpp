// SPDX-License-Identifier: MIT
#include "speechd/ServerLine.h"

#include <cerrno>
#include <unistd.h>

#include "input/Text.h"

namespace larynth::speechd {
namespace {

// Bytes that would end a block of sound, or mean this, come as this byte and themselves with a bit turned
// over.
constexpr std::uint8_t kEscape = 0x7D;
constexpr std::uint8_t kTurnedBit = 0x20;

void AppendEscaped(std::string& bytes, unsigned value) {
    const auto byte = static_cast<std::uint8_t>(value & 0xFFU);
    const bool isSpecial = byte == kEscape || byte == '\n';
    if (isSpecial) bytes += static_cast<char>(kEscape);
    bytes += static_cast<char>(isSpecial ? byte ^ kTurnedBit : byte);
}

}  // namespace

std::optional<std::string> CommandInput::Line() {
    std::string line;
    if (!std::getline(input_, line)) return std::nullopt;
    return line;
}

std::vector<std::string> CommandInput::Block() {
    std::vector<std::string> lines;
    for (auto line = Line(); line && *line != "."; line = Line()) {
        lines.push_back(line->starts_with("..") ? line->substr(1) : *line);
    }
    return lines;
}

void EventOutput::Send(std::string_view lines) {
    std::string bytes(lines);
    bytes += '\n';
    const std::lock_guard lock(mutex_);
    for (std::string_view left = bytes; !left.empty();) {
        const ssize_t written = write(descriptor_, left.data(), left.size());
        if (written < 0 && errno != EINTR) return;
        if (written > 0) left.remove_prefix(static_cast<std::size_t>(written));
    }
}

void EventOutput::SendMark(const std::string& name) { Send("700-" + Printable(name) + "\n700 INDEX MARK"); }

void EventOutput::SendSound(std::span<const std::int16_t> samples, int sampleFreq) {
    if (samples.empty()) return;
    std::string event = "705-bits=16\n705-num_channels=1\n705-sample_rate=" + std::to_string(sampleFreq) +
                        "\n705-num_samples=" + std::to_string(samples.size()) +
                        "\n705-big_endian=0\n705-AUDIO";
    event += '\0';
    event.reserve(event.size() + 3 * samples.size());
    for (const std::int16_t sample : samples) {
        AppendEscaped(event, static_cast<std::uint16_t>(sample));
        AppendEscaped(event, static_cast<unsigned>(static_cast<std::uint16_t>(sample)) >> 8U);
    }
    Send(event + "\n705 AUDIO");
}

}  // namespace larynth::speechd
