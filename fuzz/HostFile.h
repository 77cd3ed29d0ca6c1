// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include <larynth/Speech.h>

#include "input/Text.h"

namespace larynth {

inline void Expect(bool holds) {
    if (!holds) std::abort();
}

/// Reads a file of these bytes. A text that is refused is refused at one of its places, with a message that a
/// terminal may get; a failure behind the reading is the components' to tell.
template <class Read>
void ReadHostFile(const std::uint8_t* data, std::size_t size, Read read) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::istringstream file(text);
    try {
        read(file);
    } catch (const InputError& error) {
        long line = 1, column = 1;
        const int found = std::sscanf(error.what(), "file:%ld:%ld: expected ", &line, &column);
        Expect(found == 2 || std::string_view(error.what()).starts_with("file: expected "));
        Expect(line >= 1 && line <= std::ranges::count(text, '\n') + 2);
        Expect(column >= 1 && static_cast<std::size_t>(column) <= size + 1);
        Expect(IsUtf8(error.what()) && FindControl(error.what()) == std::string_view::npos);
    } catch (const std::runtime_error&) {
        return;
    }
}

/// Renders some samples of a new packet.
inline void Speak(const SynthesizerSettings& settings) {
    KlattFrame frame;
    frame.length = 50;
    Expect(Synthesizer(settings).Render(frame).size() == 50);
}

}  // namespace larynth
