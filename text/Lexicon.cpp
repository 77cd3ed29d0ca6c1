// SPDX-License-Identifier: MIT
#include "text/Lexicon.h"

#include "input/Text.h"
#include "text/Characters.h"
#include "text/PhoneNames.h"

namespace larynth {

Lexicon::Lexicon(std::istream& input, const std::string& name) {
    for (TextLines lines(input, name); lines.Next();) {
        const std::string_view line = lines.Line();
        if (Trimmed(line).empty() || line.starts_with('#')) continue;
        const std::size_t tabulator = line.find('\t');
        if (tabulator == std::string_view::npos || Trimmed(line.substr(0, tabulator)).empty())
            throw BadInput(lines.At(1), "a word, a tabulator and phones");
        std::string phones;
        for (std::string_view rest = Trimmed(line.substr(tabulator)); !rest.empty();) {
            const std::string_view symbol = rest.substr(0, rest.find_first_of(kBlanks));
            const auto phone = FindArpabet(symbol);
            if (!phone) throw BadInput(lines.At(symbol), "a phone of ARPAbet instead of " + Quoted(symbol));
            phones += (phones.empty() ? "" : " ") + std::string(phone->name);
            if (phone->IsVowel()) phones += static_cast<char>('0' + phone->stress);
            rest = Trimmed(rest.substr(symbol.size()));
        }
        if (phones.empty())
            throw BadInput(lines.At(static_cast<std::int64_t>(CharacterCount(line)) + 1), "phones");
        phones_[Lower(Trimmed(line.substr(0, tabulator)))] = phones;
    }
}

const std::string* Lexicon::Find(std::string_view word) const {
    const auto entry = phones_.find(Lower(word));
    return entry == phones_.end() ? nullptr : &entry->second;
}

}  // namespace larynth
