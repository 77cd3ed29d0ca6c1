// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <map>
#include <string>
#include <string_view>

namespace larynth {

/// The user's own pronunciations: lines of a word, a tabulator and its phones in ARPAbet with stress digits
/// ("gif<TAB>JH IH1 F"). What follows a # at a line's beginning is a comment. Capital letters count as small
/// ones.
class Lexicon {
  public:
    Lexicon() = default;

    /// `name` serves messages. Raises BadInput, with the place, for what is no such line.
    Lexicon(std::istream& input, const std::string& name);

    /// The phones of a word, in the names of the phone table with stress digits at the vowels; null for a
    /// word that it does not have. The text lives as long as this object.
    const std::string* Find(std::string_view word) const;

  private:
    std::map<std::string, std::string, std::less<>> phones_;
};

}  // namespace larynth
