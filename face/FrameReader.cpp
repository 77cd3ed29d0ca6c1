// SPDX-License-Identifier: MIT
#include "face/Failure.h"
#include "face/FrameTable.h"
#include "face/Targets.h"

namespace larynth {
namespace {

std::unique_ptr<FrameReader::Implementation> NewReader(std::istream& input, const std::string& fileName,
                                                       FrameForm form, const FrameDefaults& defaults) {
    if (form == FrameForm::Table) return std::make_unique<FrameTable>(input, fileName, defaults);
    return std::make_unique<TargetFrames>(ReadTargets(input, fileName), defaults, fileName);
}

std::unique_ptr<FrameReader::Implementation> NewReader(const std::string& path, FrameForm form,
                                                       const FrameDefaults& defaults) {
    auto file = std::make_unique<InputFile>(path, InputFile::Use::Once);
    auto reader = NewReader(file->Stream(), path, form, defaults);
    reader->Own(std::move(file));
    return reader;
}

KlattUtterance ReadAll(FrameReader reader) {
    KlattUtterance utterance;
    while (reader.Next()) {
        if (!reader.Marker().empty()) utterance.markers.push_back({utterance.frames.size(), reader.Marker()});
        utterance.frames.push_back(reader.Frame());
    }
    utterance.sampleFreq = reader.SampleFreq();
    return utterance;
}

}  // namespace

FrameReader::FrameReader(const std::string& path, FrameForm form, const FrameDefaults& defaults)
    : implementation_(Translated([&] { return NewReader(path, form, defaults); })) {}
FrameReader::FrameReader(std::istream& input, const std::string& fileName, FrameForm form,
                         const FrameDefaults& defaults)
    : implementation_(Translated([&] { return NewReader(input, fileName, form, defaults); })) {}
FrameReader::FrameReader(FrameReader&&) noexcept = default;
FrameReader& FrameReader::operator=(FrameReader&&) noexcept = default;
FrameReader::~FrameReader() = default;

bool FrameReader::Next() {
    return Translated([&] { return implementation_->Next(); });
}
const KlattFrame& FrameReader::Frame() const noexcept { return implementation_->Frame(); }
const std::string& FrameReader::Marker() const noexcept { return implementation_->Marker(); }
double FrameReader::SampleFreq() const noexcept { return implementation_->SampleFreq(); }
std::string FrameReader::Place() const { return implementation_->Place(); }

KlattUtterance ReadUtterance(const std::string& path, FrameForm form, const FrameDefaults& defaults) {
    return ReadAll(FrameReader(path, form, defaults));
}

KlattUtterance ReadUtterance(std::istream& input, const std::string& fileName, FrameForm form,
                             const FrameDefaults& defaults) {
    return ReadAll(FrameReader(input, fileName, form, defaults));
}

}  // namespace larynth
