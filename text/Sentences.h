// SPDX-License-Identifier: MIT
/// A stream of characters, with what markup says about them, cut into sentences.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "speech/Utterance.h"

namespace larynth {

/// What a stretch of text is, so that it is read in its way.
enum class SayAs { Text, Characters, Cardinal, Ordinal, Digits, Date, Time, Telephone };

/// What markup says about a stretch of text.
struct Style {
    Prosody prosody;
    SayAs sayAs = SayAs::Text;
    std::string format;  ///< Of a date: the order of "y", "m" and "d".
    std::string phones;  ///< Where not empty: how the whole stretch is said.
};

/// Something that stands between two characters.
struct Annotation {
    enum class Kind { Mark, Break, Style };

    std::size_t place = 0;  ///< In front of the byte with this index.
    Kind kind = Kind::Mark;
    std::string name;                    ///< Of a mark. UTF-8.
    double seconds = 0.0;                ///< Of a break.
    std::shared_ptr<const Style> style;  ///< From here on.
};

/// A sentence, in UTF-8, in whose text every line end and every row of blanks is one blank.
struct MarkedText {
    std::string text;
    std::vector<Annotation> annotations;  ///< In the order of their places.
    std::shared_ptr<const Style> style;   ///< At the beginning.
};

/// Collects characters and gives sentences as soon as they are complete. A sentence ends behind . ! ? and a
/// blank, at an empty line and where the writer says so; not behind an abbreviation, an initial or a closing
/// quotation mark in front of a small letter. Longer ones than about 400 bytes are cut at a comma, a blank,
/// or anywhere. Of a row of more than 1000 characters without a blank the number of the others is given.
class SentenceCutter {
  public:
    void Add(char32_t c);

    /// Puts it behind the last character. The place is set here.
    void Annotate(Annotation annotation);

    /// What is there is a sentence. Annotations without any text wait for the next one.
    void EndSentence();

    /// The same for the end of the input: nothing waits.
    void Finish();

    /// Moves the first complete sentence out; false when there is none.
    bool Take(MarkedText& sentence);

    /// Whether a sentence is complete.
    bool HasSentence() const noexcept { return !complete_.empty(); }

  private:
    void AddBlank(bool lineEnd);
    void EndRow();
    void CutTooLong();
    void CutAt(std::size_t place);

    MarkedText current_;
    std::shared_ptr<const Style> style_ = std::make_shared<const Style>();  // behind the last character
    std::deque<MarkedText> complete_;
    std::size_t row_ = 0;     // characters since the last blank
    bool lineEnded_ = false;  // nothing but blanks since
    bool undecided_ = false;  // the next character tells whether the sentence has ended
};

}  // namespace larynth
