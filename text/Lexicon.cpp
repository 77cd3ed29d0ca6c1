// SPDX-License-Identifier: MIT
#include "text/Lexicon.h"

#include "input/Text.h"
#include "text/Characters.h"
#include "text/PhoneInput.h"

namespace larynth {

Lexicon::Lexicon(std::istream& input, const std::string& name) {
    for (TextLines lines(input, name); lines.Next();) {
        const std::string_view line = lines.Line();
        if (Trimmed(line).empty() || line.starts_with('#')) continue;
        const std::size_t tabulator = line.find('\t');
        if (tabulator == std::string_view::npos || Trimmed(line.substr(0, tabulator)).empty())
            throw BadInput(lines.At(1), "a word, a tabulator and phones");
        const std::string_view written = Trimmed(line.substr(tabulator));
        std::string bad;
        const auto phones = PhonesOfWord(written, TextForm::Arpabet, bad);
        if (!phones) {
            const std::size_t place = bad.empty() ? line.size() : line.find(bad, tabulator);
            throw BadInput(lines.At(line.substr(place, 0)),
                           bad.empty() ? "phones" : "a phone of ARPAbet instead of " + Quoted(bad));
        }
        phones_[Lower(Trimmed(line.substr(0, tabulator)))] = *phones;
    }
}

const std::string* Lexicon::Find(std::string_view word) const {
    const auto entry = phones_.find(Lower(word));
    return entry == phones_.end() ? nullptr : &entry->second;
}

}  // namespace larynth
