// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/tables/ItemVocabulary.h"
#include "input/Text.h"

namespace larynth {

/// One frame of a table.
struct TableFrame {
    int length = 0;      ///< Samples.
    std::string marker;  ///< UTF-8 without control characters; empty: no marker in front of this frame.
    std::vector<double> values;  ///< One for each value column; repetition is resolved.
};

/// Of an utterance that says nothing else, Hz.
inline constexpr double kDefaultSampleFreq = 11025.0;

/// What holds for a table that has no column of its own for it.
struct FrameTableDefaults {
    std::optional<int> frameLen;       ///< Samples.
    std::optional<double> sampleFreq;  ///< Hz.
};

/// Reads a frame table, frame by frame: UTF-8 text, one frame a line, fields separated by commas, blanks
/// (spaces and tabs) around a field ignored.
///
/// A line that begins with '#', behind blanks or not, is a comment; blank lines are skipped; a carriage
/// return at a line's end and a byte order mark at the file's beginning are dropped. The first other line
/// names the columns: items, SampleFreq, FrameLen, Marker. An empty field repeats the value of the frame
/// before, in the first frame that of a new packet; an empty Marker is none.
class FrameTableParser {
  public:
    static constexpr int kMaxFrameLen = 1'000'000;

    /// `fileName` serves messages. The input and the vocabulary must live as long as the parser.
    FrameTableParser(std::istream& input, std::string fileName, const ItemVocabulary& vocabulary,
                     const FrameTableDefaults& defaults);

    /// Moves to the next frame; false behind the last one, of which there is at least one. Raises BadInput
    /// for the first thing that is wrong, with its place.
    bool Next();

    // From the first frame on:
    const TableFrame& Frame() const noexcept { return frame_; }
    double SampleFreq() const noexcept { return sampleFreq_; }  ///< Hz; the same for all frames.
    /// Which of a packet's items each value column holds.
    const std::vector<int>& ItemIndices() const noexcept { return itemIndices_; }
    TextPosition Position() const { return lines_.At(1); }

  private:
    enum class ColumnKind { Value, SampleFreq, FrameLen, Marker };
    struct Column {
        ColumnKind kind;
        std::string name;
    };
    void SplitFields();
    bool NextContent();
    void ReadHeader();
    Column ReadColumn(std::string_view field);
    void ReadFrame();
    void ReadField(ColumnKind kind, std::string_view field, std::size_t& valueIndex);
    void ReadSampleFreq(std::string_view field);
    void ReadFrameLen(std::string_view field);
    void ReadMarker(std::string_view field);

    [[noreturn]] void Fail(std::string_view field, const std::string& expected) const;

    TextLines lines_;
    const ItemVocabulary& vocabulary_;
    FrameTableDefaults defaults_;
    std::vector<Column> columns_;
    std::vector<std::string_view> fields_;  // of the current line
    std::vector<int> itemIndices_;
    TableFrame frame_;
    double sampleFreq_;
    bool isFirst_ = true;  // no frame has been read yet
};

}  // namespace larynth
