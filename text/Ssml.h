// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <memory>
#include <string>

#include "text/Sentences.h"

namespace larynth {

/// Reads Speech Synthesis Markup Language 1.1 as it comes. Text of elements that it does not know is read as
/// if they were not there. What is no well-formed XML in UTF-8 is refused where it stands, after what came
/// before it.
class SsmlReader {
  public:
    /// `name` serves messages; `meanPitch` is the speaker's mean F0, Hz. The input must live as long as this
    /// object.
    SsmlReader(std::istream& input, std::string name, double meanPitch);
    SsmlReader(const SsmlReader&) = delete;
    SsmlReader& operator=(const SsmlReader&) = delete;
    ~SsmlReader();

    /// The next sentence; false behind the last one. Raises BadInput with the place.
    bool Next(MarkedText& sentence);

  private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace larynth
