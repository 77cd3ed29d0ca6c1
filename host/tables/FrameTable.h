// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/tables/ItemVocabulary.h"
#include "host/tables/Text.h"

namespace larynth {

/// One frame of a table.
struct TableFrame {
    int length;                  ///< Samples.
    std::string marker;          ///< UTF-8; empty: no marker in front of this frame.
    std::vector<double> values;  ///< One for each value column; repetition is resolved.
};

/// An utterance as a table of frames.
struct FrameTable {
    double sampleFreq = 11025.0;   ///< Hz.
    std::vector<int> itemIndices;  ///< Which of a packet's items each value column holds.
    std::vector<TableFrame> frames;
};

/// What holds for a table that has no column of its own for it.
struct FrameTableDefaults {
    std::optional<int> frameLen;       ///< Samples.
    std::optional<double> sampleFreq;  ///< Hz.
};

/// Reads a frame table: UTF-8 text, one frame a line, fields separated by commas, blanks (spaces and tabs)
/// around a field ignored.
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

    /// Reads a whole table; to be called once. Raises BadInput for the first thing that is wrong, with its
    /// place, or when the input cannot be read.
    FrameTable Parse();

  private:
    enum class ColumnKind { Value, SampleFreq, FrameLen, Marker };
    struct Column {
        ColumnKind kind;
        std::string name;
    };
    struct Field {
        std::string_view text;
        int column;  // of its first character
    };

    static std::vector<Field> SplitFields(std::string_view line);
    bool NextContent();
    void ReadHeader();
    Column ReadColumn(const Field& field);
    void ReadFrame();
    void ReadField(const Column& column, const Field& field, TableFrame& frame, std::size_t& valueIndex);
    void ReadSampleFreq(const Field& field);
    void ReadFrameLen(const Field& field, TableFrame& frame) const;
    void ReadMarker(const Field& field, TableFrame& frame) const;
    TableFrame NextFrame() const;

    [[noreturn]] void Fail(int column, const std::string& expected) const;
    [[noreturn]] void Fail(const Field& field, const std::string& expected) const;

    TextLines lines_;
    const ItemVocabulary& vocabulary_;
    FrameTableDefaults defaults_;
    std::vector<Column> columns_;
    std::vector<double> newPacketValues_;
    FrameTable table_;
};

}  // namespace larynth
