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
    : lines_(input, std::move(fileName)),
      vocabulary_(vocabulary),
      defaults_(defaults),
      sampleFreq_(defaults.sampleFreq.value_or(kDefaultSampleFreq)) {}

bool FrameTableParser::Next() {
    if (columns_.empty()) {
        if (!NextContent()) {
            throw BadInput(lines_.At(1), "a line with the names of the columns, found the end");
        }
        ReadHeader();
    }
    if (!NextContent()) {
        if (isFirst_) throw BadInput(lines_.At(1), "a frame, found the end");
        return false;
    }
    ReadFrame();
    isFirst_ = false;
    return true;
}

// To the next line that is neither blank nor a comment.
bool FrameTableParser::NextContent() {
    while (lines_.Next()) {
        const std::string_view text = Trimmed(lines_.Line());
        if (!text.empty() && text.front() != '#') return true;
    }
    return false;
}

void FrameTableParser::SplitFields() {
    fields_.clear();
    std::string_view line = lines_.Line();
    for (bool more = true; more;) {
        const std::size_t comma = line.find(',');
        fields_.push_back(Trimmed(line.substr(0, comma)));
        more = comma != std::string_view::npos;
        if (more) line.remove_prefix(comma + 1);
    }
}

void FrameTableParser::ReadHeader() {
    bool hasFrameLen = defaults_.frameLen.has_value();
    SplitFields();
    for (const std::string_view field : fields_) {
        columns_.push_back(ReadColumn(field));
        if (columns_.back().kind == ColumnKind::FrameLen) hasFrameLen = true;
    }
    if (!hasFrameLen) throw BadInput(lines_.At(1), "a column FrameLen (or --frame-len)");
    // What a line of empty fields would say.
    frame_.length = defaults_.frameLen.value_or(kNewPacketLength);
    for (const int index : itemIndices_) frame_.values.push_back(vocabulary_[index].initial);
}

FrameTableParser::Column FrameTableParser::ReadColumn(std::string_view field) {
    const bool twice = std::any_of(columns_.begin(), columns_.end(),
                                   [&](const Column& column) { return column.name == field; });
    if (twice) Fail(field, "every column once");
    std::string name(field);
    if (name == "SampleFreq") return {ColumnKind::SampleFreq, std::move(name)};
    if (name == "FrameLen") return {ColumnKind::FrameLen, std::move(name)};
    if (name == "Marker") return {ColumnKind::Marker, std::move(name)};
    const std::optional<int> index = vocabulary_.IndexOf(name);
    if (!index) Fail(field, "the name of an item, SampleFreq, FrameLen or Marker");
    itemIndices_.push_back(*index);
    return {ColumnKind::Value, std::move(name)};
}

void FrameTableParser::ReadFrame() {
    SplitFields();
    const std::size_t count = columns_.size();
    if (fields_.size() != count) {
        const std::string_view lineEnd = lines_.Line().substr(lines_.Line().size());
        throw BadInput(
            lines_.At(fields_.size() > count ? fields_[count] : lineEnd),
            std::to_string(count) + " fields as in the header, found " + std::to_string(fields_.size()));
    }
    std::size_t valueIndex = 0;
    for (std::size_t i = 0; i < count; ++i) ReadField(columns_[i].kind, fields_[i], valueIndex);
}

void FrameTableParser::ReadField(ColumnKind kind, std::string_view field, std::size_t& valueIndex) {
    switch (kind) {
        case ColumnKind::SampleFreq:
            return ReadSampleFreq(field);
        case ColumnKind::FrameLen:
            return ReadFrameLen(field);
        case ColumnKind::Marker:
            return ReadMarker(field);
        case ColumnKind::Value:
            break;
    }
    double& value = frame_.values[valueIndex++];
    if (field.empty()) return;
    const std::optional<double> number = ParseNumber(field);
    if (!number) Fail(field, "a number");
    value = *number;
}

void FrameTableParser::ReadSampleFreq(std::string_view field) {
    // A column displaces --sample-freq, even where its first field is empty.
    if (isFirst_) sampleFreq_ = kDefaultSampleFreq;
    if (field.empty()) return;
    const std::optional<double> number = ParseSampleFreq(field);
    if (!number) Fail(field, std::string("a sample frequency, ") + kSampleFreqRange);
    if (!isFirst_ && *number != sampleFreq_) {
        Fail(field, "the sample frequency " + ShortestText(sampleFreq_) + " of the frames before");
    }
    sampleFreq_ = *number;
}

void FrameTableParser::ReadFrameLen(std::string_view field) {
    // A column displaces --frame-len, even where its first field is empty.
    if (isFirst_) frame_.length = kNewPacketLength;
    if (field.empty()) return;
    const std::optional<std::int64_t> number = ParseInteger(field, 0, kMaxFrameLen);
    if (!number) Fail(field, "a frame length, a whole number from 0 to " + std::to_string(kMaxFrameLen));
    frame_.length = static_cast<int>(*number);
}

void FrameTableParser::ReadMarker(std::string_view field) {
    if (!IsUtf8(field)) throw BadInput(lines_.At(field), "a marker in UTF-8");
    const std::size_t control = FindControl(field);
    if (control != std::string_view::npos) {
        throw BadInput(lines_.At(field.substr(control)), "a marker without control characters");
    }
    frame_.marker = field;
}

void FrameTableParser::Fail(std::string_view field, const std::string& expected) const {
    throw BadInput(lines_.At(field), expected + ", found " + (field.empty() ? "nothing" : Quoted(field)));
}

}  // namespace larynth
