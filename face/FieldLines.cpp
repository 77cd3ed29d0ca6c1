// SPDX-License-Identifier: MIT
#include "face/FieldLines.h"

namespace larynth {

bool FieldLines::Next() {
    std::string_view text;
    do {
        if (!lines_.Next()) return false;
        text = Trimmed(lines_.Line());
    } while (text.empty() || text.front() == '#');
    fields_.clear();
    std::string_view line = lines_.Line();
    for (bool more = true; more;) {
        const std::size_t comma = line.find(',');
        fields_.push_back(Trimmed(line.substr(0, comma)));
        more = comma != std::string_view::npos;
        if (more) line.remove_prefix(comma + 1);
    }
    return true;
}

void FieldLines::Fail(std::string_view field, const std::string& expected) const {
    throw BadInput(At(field), expected + ", found " + (field.empty() ? "nothing" : Quoted(field)));
}

}  // namespace larynth
