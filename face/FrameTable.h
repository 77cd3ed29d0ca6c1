// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "face/FrameSource.h"
#include "input/FieldLines.h"

namespace larynth {

/// Reads a frame table, frame by frame.
class FrameTable final : public FrameReader::Implementation {
  public:
    FrameTable(std::istream& input, std::string fileName, const FrameDefaults& defaults);

    bool Next() override;
    double SampleFreq() const noexcept override { return sampleFreq_; }
    std::string Place() const override;

  private:
    enum class ColumnKind { Value, SampleFreq, FrameLen, Marker };
    struct Column {
        ColumnKind kind;
        std::string name;
        double KlattFrame::*value;  // of a Value
    };
    void ReadHeader();
    Column ReadColumn(std::string_view field) const;
    void ReadFrame();
    void ReadField(const Column& column, std::string_view field);
    void ReadSampleFreq(std::string_view field);
    void ReadFrameLen(std::string_view field);
    void ReadMarker(std::string_view field);

    FieldLines lines_;
    FrameDefaults defaults_;
    std::vector<Column> columns_;
    double sampleFreq_;    // Hz
    bool isFirst_ = true;  // no frame has been read yet
};

}  // namespace larynth
