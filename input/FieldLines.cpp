// SPDX-License-Identifier: MIT
#include "input/FieldLines.h"

namespace larynth {
namespace {

void SplitAtCommas(std::string_view line, std::vector<std::string_view>& fields) {
    for (bool more = true; more;) {
        const std::size_t comma = line.find(',');
        fields.push_back(Trimmed(line.substr(0, comma)));
        more = comma != std::string_view::npos;
        if (more) line.remove_prefix(comma + 1);
    }
}

void SplitAtBlanks(std::string_view line, std::vector<std::string_view>& fields) {
    for (line = Trimmed(line); !line.empty(); line = Trimmed(line)) {
        fields.push_back(line.substr(0, line.find_first_of(kBlanks)));
        line.remove_prefix(fields.back().size());
    }
}

}  // namespace

bool FieldLines::Next() {
    std::string_view text;
    do {
        if (!lines_.Next()) return false;
        text = Trimmed(lines_.Line());
    } while (text.empty() || text.front() == '#');
    fields_.clear();
    (separator_ == Separator::Comma ? SplitAtCommas : SplitAtBlanks)(lines_.Line(), fields_);
    return true;
}

void FieldLines::Fail(std::string_view field, const std::string& expected) const {
    throw BadInput(At(field), expected + ", found " + (field.empty() ? "nothing" : Quoted(field)));
}

double FieldLines::Number(std::string_view field, double least, double most, const std::string& what) const {
    const auto value = ParseNumber(field);
    if (!value || *value < least || *value > most) {
        Fail(field, what + " from " + ShortestText(least) + " to " + ShortestText(most));
    }
    return *value;
}

}  // namespace larynth
