// SPDX-License-Identifier: MIT
#include "face/FrameTable.h"

#include <algorithm>
#include <utility>

namespace larynth {
namespace {

constexpr int kNewPacketLength = 0;  // samples

}  // namespace

FrameTable::FrameTable(std::istream& input, std::string fileName, const FrameDefaults& defaults)
    : lines_(input, std::move(fileName), FieldLines::Separator::Comma),
      defaults_(defaults),
      sampleFreq_(defaults.sampleFreq.value_or(kDefaultSampleFreq)) {}

std::string FrameTable::Place() const {
    const TextPosition position = lines_.Beginning();
    return position.file + ':' + std::to_string(position.line);
}

bool FrameTable::Next() {
    if (columns_.empty()) {
        if (!lines_.Next()) {
            throw BadInput(lines_.Beginning(), "a line with the names of the columns, found the end");
        }
        ReadHeader();
    }
    if (!lines_.Next()) {
        if (isFirst_) throw BadInput(lines_.Beginning(), "a frame, found the end");
        return false;
    }
    ReadFrame();
    isFirst_ = false;
    return true;
}

void FrameTable::ReadHeader() {
    bool hasFrameLen = defaults_.frameLen.has_value();
    for (const std::string_view field : lines_.Fields()) {
        columns_.push_back(ReadColumn(field));
        if (columns_.back().kind == ColumnKind::FrameLen) hasFrameLen = true;
    }
    if (!hasFrameLen) throw BadInput(lines_.Beginning(), "a column FrameLen (or --frame-len)");
    frame_.length = defaults_.frameLen.value_or(kNewPacketLength);
}

FrameTable::Column FrameTable::ReadColumn(std::string_view field) const {
    const bool twice = std::any_of(columns_.begin(), columns_.end(),
                                   [&](const Column& column) { return column.name == field; });
    if (twice) lines_.Fail(field, "every column once");
    std::string name(field);
    if (name == "SampleFreq") return {ColumnKind::SampleFreq, std::move(name), nullptr};
    if (name == "FrameLen") return {ColumnKind::FrameLen, std::move(name), nullptr};
    if (name == "Marker") return {ColumnKind::Marker, std::move(name), nullptr};
    const FrameItem* const item = FindFrameItem(name);
    if (item == nullptr) lines_.Fail(field, "the name of an item, SampleFreq, FrameLen or Marker");
    return {ColumnKind::Value, std::move(name), item->value};
}

void FrameTable::ReadFrame() {
    const auto& fields = lines_.Fields();
    const std::size_t count = columns_.size();
    if (fields.size() != count) {
        throw BadInput(
            lines_.At(fields.size() > count ? fields[count] : lines_.End()),
            std::to_string(count) + " fields as in the header, found " + std::to_string(fields.size()));
    }
    for (std::size_t i = 0; i < count; ++i) ReadField(columns_[i], fields[i]);
}

void FrameTable::ReadField(const Column& column, std::string_view field) {
    switch (column.kind) {
        case ColumnKind::SampleFreq:
            return ReadSampleFreq(field);
        case ColumnKind::FrameLen:
            return ReadFrameLen(field);
        case ColumnKind::Marker:
            return ReadMarker(field);
        case ColumnKind::Value:
            break;
    }
    if (field.empty()) return;
    const std::optional<double> number = ParseNumber(field);
    if (!number) lines_.Fail(field, "a number");
    frame_.*column.value = *number;
}

void FrameTable::ReadSampleFreq(std::string_view field) {
    // A column displaces --sample-freq, even where its first field is empty.
    if (isFirst_) sampleFreq_ = kDefaultSampleFreq;
    if (field.empty()) return;
    const std::optional<double> number = ParseSampleFreq(field);
    if (!number) lines_.Fail(field, std::string("a sample frequency, ") + kSampleFreqRange);
    if (!isFirst_ && *number != sampleFreq_) {
        lines_.Fail(field, "the sample frequency " + ShortestText(sampleFreq_) + " of the frames before");
    }
    sampleFreq_ = *number;
}

void FrameTable::ReadFrameLen(std::string_view field) {
    // A column displaces --frame-len, even where its first field is empty.
    if (isFirst_) frame_.length = kNewPacketLength;
    if (field.empty()) return;
    const std::optional<std::int64_t> number = ParseInteger(field, 0, kMaxFrameLen);
    if (!number)
        lines_.Fail(field, "a frame length, a whole number from 0 to " + std::to_string(kMaxFrameLen));
    frame_.length = static_cast<int>(*number);
}

void FrameTable::ReadMarker(std::string_view field) {
    if (!IsUtf8(field)) throw BadInput(lines_.At(field), "a marker in UTF-8");
    const std::size_t control = FindControl(field);
    if (control != std::string_view::npos) {
        throw BadInput(lines_.At(field.substr(control)), "a marker without control characters");
    }
    marker_ = field;
}

}  // namespace larynth
