// SPDX-License-Identifier: MIT
#include "host/tables/FrameTable.h"

#include <algorithm>
#include <utility>

namespace larynth {
namespace {

constexpr int kNewPacketLength = 0;  // samples

}  // namespace

FrameTableParser::FrameTableParser(std::istream& input, std::string fileName,
                                   const ItemVocabulary& vocabulary, const FrameTableDefaults& defaults)
    : lines_(input, std::move(fileName)), vocabulary_(vocabulary), defaults_(defaults) {
    if (defaults.sampleFreq) table_.sampleFreq = *defaults.sampleFreq;
}

FrameTable FrameTableParser::Parse() {
    if (!NextContent()) Fail(1, "a line with the names of the columns, found the end");
    ReadHeader();
    while (NextContent()) ReadFrame();
    if (table_.frames.empty()) Fail(1, "a frame, found the end");
    return std::move(table_);
}

// To the next line that is neither blank nor a comment.
bool FrameTableParser::NextContent() {
    while (lines_.Next()) {
        const std::string_view text = Trimmed(lines_.Line());
        if (!text.empty() && text.front() != '#') return true;
    }
    return false;
}

std::vector<FrameTableParser::Field> FrameTableParser::SplitFields(std::string_view line) {
    std::vector<Field> fields;
    std::size_t column = 1;
    for (bool more = true; more;) {
        const std::size_t comma = line.find(',');
        const std::string_view whole = line.substr(0, comma);
        const std::size_t blanks = std::min(whole.find_first_not_of(kBlanks), whole.size());
        const bool empty = blanks == whole.size();
        fields.push_back({Trimmed(whole), static_cast<int>(column + (empty ? 0 : blanks))});
        more = comma != std::string_view::npos;
        column += CharacterCount(whole) + 1;
        if (more) line.remove_prefix(comma + 1);
    }
    return fields;
}

void FrameTableParser::ReadHeader() {
    bool hasFrameLen = defaults_.frameLen.has_value();
    for (const Field& field : SplitFields(lines_.Line())) {
        const Column column = ReadColumn(field);
        if (column.kind == ColumnKind::FrameLen) hasFrameLen = true;
        columns_.push_back(column);
    }
    if (!hasFrameLen) Fail(1, "a column FrameLen (or --frame-len)");
    for (const int index : table_.itemIndices) newPacketValues_.push_back(vocabulary_[index].initial);
}

FrameTableParser::Column FrameTableParser::ReadColumn(const Field& field) {
    const bool twice = std::any_of(columns_.begin(), columns_.end(),
                                   [&](const Column& column) { return column.name == field.text; });
    if (twice) Fail(field, "every column once");
    std::string name(field.text);
    if (name == "SampleFreq") return {ColumnKind::SampleFreq, std::move(name)};
    if (name == "FrameLen") return {ColumnKind::FrameLen, std::move(name)};
    if (name == "Marker") return {ColumnKind::Marker, std::move(name)};
    const std::optional<int> index = vocabulary_.IndexOf(name);
    if (!index) Fail(field, "the name of an item, SampleFreq, FrameLen or Marker");
    table_.itemIndices.push_back(*index);
    return {ColumnKind::Value, std::move(name)};
}

// What a line of empty fields would say.
TableFrame FrameTableParser::NextFrame() const {
    if (table_.frames.empty()) return {defaults_.frameLen.value_or(kNewPacketLength), {}, newPacketValues_};
    const TableFrame& last = table_.frames.back();
    return {last.length, {}, last.values};
}

void FrameTableParser::ReadFrame() {
    const std::vector<Field> fields = SplitFields(lines_.Line());
    const std::size_t count = columns_.size();
    if (fields.size() != count) {
        const int lineEnd = static_cast<int>(CharacterCount(lines_.Line())) + 1;
        Fail(fields.size() > count ? fields[count].column : lineEnd,
             std::to_string(count) + " fields as in the header, found " + std::to_string(fields.size()));
    }
    TableFrame frame = NextFrame();
    std::size_t valueIndex = 0;
    for (std::size_t i = 0; i < count; ++i) ReadField(columns_[i], fields[i], frame, valueIndex);
    table_.frames.push_back(std::move(frame));
}

void FrameTableParser::ReadField(const Column& column, const Field& field, TableFrame& frame,
                                 std::size_t& valueIndex) {
    switch (column.kind) {
        case ColumnKind::SampleFreq:
            return ReadSampleFreq(field);
        case ColumnKind::FrameLen:
            return ReadFrameLen(field, frame);
        case ColumnKind::Marker:
            return ReadMarker(field, frame);
        case ColumnKind::Value:
            break;
    }
    double& value = frame.values[valueIndex++];
    if (field.text.empty()) return;
    const std::optional<double> number = ParseNumber(field.text);
    if (!number) Fail(field, "a number");
    value = *number;
}

void FrameTableParser::ReadSampleFreq(const Field& field) {
    const bool first = table_.frames.empty();
    // A column displaces --sample-freq, even where its first field is empty.
    if (first) table_.sampleFreq = FrameTable{}.sampleFreq;
    if (field.text.empty()) return;
    const std::optional<double> number = ParseNumber(field.text);
    if (!number || *number <= 0) Fail(field, "a sample frequency above 0");
    if (!first && *number != table_.sampleFreq) {
        Fail(field, "the sample frequency " + ShortestText(table_.sampleFreq) + " of the frames before");
    }
    table_.sampleFreq = *number;
}

void FrameTableParser::ReadFrameLen(const Field& field, TableFrame& frame) const {
    // A column displaces --frame-len, even where its first field is empty.
    if (table_.frames.empty()) frame.length = kNewPacketLength;
    if (field.text.empty()) return;
    const std::optional<std::int64_t> number = ParseInteger(field.text, 0, kMaxFrameLen);
    if (!number) Fail(field, "a frame length, a whole number from 0 to " + std::to_string(kMaxFrameLen));
    frame.length = static_cast<int>(*number);
}

void FrameTableParser::ReadMarker(const Field& field, TableFrame& frame) const {
    if (!IsUtf8(field.text)) Fail(field.column, "a marker in UTF-8");
    frame.marker = field.text;
}

void FrameTableParser::Fail(int column, const std::string& expected) const {
    throw BadInput(lines_.At(column), expected);
}

void FrameTableParser::Fail(const Field& field, const std::string& expected) const {
    Fail(field.column, expected + ", found " + (field.text.empty() ? "nothing" : Quoted(field.text)));
}

}  // namespace larynth
