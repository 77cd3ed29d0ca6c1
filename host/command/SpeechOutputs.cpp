// SPDX-License-Identifier: MIT
#include "host/command/SpeechOutputs.h"

#include <algorithm>
#include <cctype>

#include "input/Text.h"
#include "speech/FramePlanner.h"

namespace larynth {
namespace {

std::string UpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

/// A marker as a field of a table may have it.
std::string MarkerField(const std::string& name) {
    std::string field = Printable(name);
    std::replace(field.begin(), field.end(), ',', ';');
    return field;
}

bool IsVowel(const PhoneEntry* entry) {
    return entry != nullptr && (entry->kind == PhoneClass::Vowel || entry->kind == PhoneClass::Diphthong);
}

}  // namespace

void PhoneList::Say(const Utterance& utterance) {
    if (utterance.phones.empty()) return;
    output_.Write(Line(utterance) + '\n');
    output_.Flush();
}

std::string PhoneList::Line(const Utterance& utterance) const {
    std::string line;
    for (const Phone& phone : utterance.phones) {
        const PhoneEntry* const entry = table_.Find(phone.name);
        if (!line.empty()) line += phone.startsWord ? " | " : " ";
        line += UpperCase(phone.name);
        if (IsVowel(entry)) line += std::to_string(phone.stress);
    }
    return line;
}

void PhoneList::Finish(std::vector<OutputFile*>& files) { files.push_back(&output_); }

FrameList::FrameList(const SpeechStyle& style, const std::string& path) : style_(style), output_(path) {
    std::string header = "FrameLen,SampleFreq";
    for (std::size_t i = 0; i < kSpeechItems; ++i) header += ',' + SpeechItemName(i);
    output_.Write(header + ",Marker\n");
}

void FrameList::Say(const Utterance& utterance) {
    FramePlanner planner(style_.table, style_.speaker, style_.settings, utterance);
    // A frame has one marker: what else stands there gets a frame without samples.
    bool isOver = false;
    while (!isOver) {
        isOver = !planner.Next();
        const SpeechFrame& frame = isOver ? last_.value_or(SpeechFrame{}) : planner.Frame();
        const std::vector<Mark>& marks = planner.Marks();
        const std::size_t own = isOver || marks.empty() ? marks.size() : marks.size() - 1;
        for (std::size_t i = 0; i < own; ++i) AddRow(0, frame, MarkerField(marks[i].name));
        if (isOver) return;
        AddRow(style_.settings.frameLength, frame, marks.empty() ? "" : MarkerField(marks.back().name));
    }
}

void FrameList::AddRow(int length, const SpeechFrame& frame, const std::string& marker) {
    std::string row = std::to_string(length) + ',';
    if (!last_) row += ShortestText(kSpeechSampleFreq);
    for (std::size_t i = 0; i < frame.size(); ++i) {
        row += ',';
        if (!last_ || (*last_)[i] != frame[i]) row += ShortestText(frame[i]);
    }
    output_.Write(row + ',' + marker + '\n');
    last_ = frame;
}

void FrameList::Finish(std::vector<OutputFile*>& files) { files.push_back(&output_); }

SoundOutput::SoundOutput(const SpeechStyle& style, const std::string& soundPath, const std::string& labelPath)
    : synthesizer_(style.table, style.speaker, style.settings) {
    if (!labelPath.empty()) labels_.emplace(labelFile_.emplace(labelPath), kSpeechSampleFreq);
    if (soundPath.empty()) {
        player_.emplace(kSpeechSampleFreq);
        return;
    }
    const AudioFormat format = AudioFormatOf(soundPath).value();
    file_.emplace(soundPath, AudioFile::AccessFor(format));
    audio_.emplace(*file_, format, HeaderRate(format, kSpeechSampleFreq), std::nullopt);
}

void SoundOutput::Say(const Utterance& utterance) {
    synthesizer_.Begin(utterance);
    for (SpeechChunk chunk; synthesizer_.Next(chunk);) {
        for (const auto& [sample, mark] : chunk.marks) {
            if (labels_) labels_->Add(samples_ + sample, Printable(mark.name));
        }
        if (audio_) audio_->Append(chunk.samples);
        if (player_) player_->Append(chunk.samples);
        samples_ += chunk.samples.size();
    }
    if (file_) file_->Flush();
}

void SoundOutput::Finish(std::vector<OutputFile*>& files) {
    if (player_) player_->Finish();
    if (audio_) audio_->Finish();
    if (file_) files.push_back(&*file_);
    if (labels_) labels_->Finish(samples_);
    if (labelFile_) files.push_back(&*labelFile_);
}

}  // namespace larynth
