// SPDX-License-Identifier: MIT
#include "speech/Fields.h"

namespace larynth {

bool FieldLines::Next() {
    while (lines_.Next()) {
        std::string_view rest = Trimmed(lines_.Line());
        if (!IsUtf8(rest)) Fail("UTF-8");
        if (rest.starts_with('#')) continue;
        fields_.clear();
        while (!rest.empty()) {
            fields_.push_back(rest.substr(0, rest.find_first_of(kBlanks)));
            rest = Trimmed(rest.substr(fields_.back().size()));
        }
        if (!fields_.empty()) return true;
    }
    return false;
}

void FieldLines::Fail(std::string_view field, const std::string& expected) const {
    throw BadInput(lines_.At(field), expected + ", found " + Quoted(field));
}

void FieldLines::Fail(const std::string& expected) const { throw BadInput(lines_.At(1), expected); }

double FieldLines::Number(std::string_view field, double least, double most, const std::string& what) const {
    const auto value = ParseNumber(field);
    if (!value || *value < least || *value > most) {
        Fail(field, what + " from " + ShortestText(least) + " to " + ShortestText(most));
    }
    return *value;
}

}  // namespace larynth
