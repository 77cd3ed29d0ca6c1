// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/FrameTable.h"
#include "host/ItemVocabulary.h"

namespace larynth {

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

    /// `fileName` serves messages. The vocabulary must live as long as the parser.
    FrameTableParser(const ItemVocabulary& vocabulary, const FrameTableDefaults& defaults,
                     std::string fileName);

    /// Reads a whole table; to be called once. Raises TableError for the first thing that is wrong, BadInput
    /// when the input cannot be read.
    FrameTable Parse(std::istream& input);

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

    std::vector<Field> SplitFields(std::string_view line) const;
    void ReadHeader(const std::vector<Field>& fields);
    Column ReadColumn(const Field& field);
    void ReadFrame(const std::vector<Field>& fields, int lineEnd);
    void ReadField(const Column& column, const Field& field, Frame& frame, std::size_t& valueIndex);
    void ReadSampleFreq(const Field& field);
    void ReadFrameLen(const Field& field, Frame& frame) const;
    void ReadMarker(const Field& field, Frame& frame) const;
    Frame NextFrame() const;

    [[noreturn]] void Fail(int column, const std::string& expected) const;
    [[noreturn]] void Fail(const Field& field, const std::string& expected) const;

    const ItemVocabulary& vocabulary_;
    FrameTableDefaults defaults_;
    std::string fileName_;
    int line_ = 0;
    std::vector<Column> columns_;
    std::vector<double> newPacketValues_;
    FrameTable table_;
};

}  // namespace larynth
