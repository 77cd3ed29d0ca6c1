// SPDX-License-Identifier: MIT
#include "host/Waveform.h"

#include <optional>

#include "host/Numbers.h"
#include "host/TableError.h"
#include "host/TextFields.h"

namespace larynth {

Waveform ParseWaveform(std::istream& input, const std::string& fileName) {
    Waveform wave;
    TextPosition here{fileName, 0, 1};
    for (std::string buffer; std::getline(input, buffer);) {
        std::string_view line = buffer;
        if (++here.line == 1 && line.starts_with(kByteOrderMark)) line.remove_prefix(kByteOrderMark.size());
        if (line.ends_with('\r')) line.remove_suffix(1);
        const std::string_view text = Trimmed(line);
        if (text.empty()) continue;
        here.column = static_cast<int>(line.find_first_not_of(kBlanks)) + 1;
        const std::optional<double> number = ParseNumber(text);
        if (!number) throw TableError(here, "a number, found " + Quoted(text));
        wave.push_back(*number);
    }
    if (input.bad()) throw BadInput(fileName + ": cannot be read");
    if (wave.empty()) throw TableError({fileName, here.line + 1, 1}, "a number, found the end");
    return wave;
}

}  // namespace larynth
