// SPDX-License-Identifier: MIT
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "input/BadInput.h"
#include "text/UtteranceReader.h"

namespace larynth::test {

/// A text's utterances, one string each: {words} and <marks> in front of the phones, stress behind them; at
/// the end the message for input that is refused.
inline std::vector<std::string> Said(std::istream& input, const TextOptions& options) {
    std::vector<std::string> said;
    try {
        for (UtteranceReader reader(input, "input", options); reader.Next();) {
            const Utterance& utterance = reader.Current();
            std::string text;
            auto mark = utterance.marks.begin();
            for (std::size_t i = 0; i <= utterance.phones.size(); ++i) {
                for (; mark != utterance.marks.end() && mark->phone == i; ++mark)
                    text += mark->kind == Mark::Kind::Word ? "{" + mark->name + "}" : "<" + mark->name + ">";
                if (i == utterance.phones.size()) break;
                const Phone& phone = utterance.phones[i];
                text += phone.startsSyllable && !phone.startsWord ? "." : " ";
                text += phone.name + (phone.stress > 0 ? std::to_string(phone.stress) : "");
            }
            said.push_back(text);
        }
    } catch (const BadInput& bad) {
        said.emplace_back(bad.what());
    }
    return said;
}

inline std::vector<std::string> Said(const std::string& text, const TextOptions& options = {}) {
    std::istringstream input(text);
    return Said(input, options);
}

/// The same without phones: words and marks.
inline std::vector<std::string> Words(const std::string& text, const TextOptions& options = {}) {
    auto said = Said(text, options);
    for (std::string& utterance : said) {
        if (utterance.starts_with("input:")) continue;
        std::string words;
        bool within = false;
        for (const char c : utterance) {
            within = within || c == '{' || c == '<';
            if (within) words += c;
            if (c == '}' || c == '>') within = false;
        }
        utterance = words;
    }
    return said;
}

}  // namespace larynth::test
