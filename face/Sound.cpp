// SPDX-License-Identifier: MIT
#include "host/audio/Sound.h"

#include "face/Failure.h"
#include "input/Text.h"

namespace larynth {
namespace {

void WriteFiles(const Sound& sound, const std::string& path, const std::string& labelPath) {
    const std::optional<AudioFormat> format = AudioFormatOf(path);
    if (!format) throw BadInput("expected a name in .wav, .flac or .raw, found " + Quoted(path));
    if (!labelPath.empty() && IsSameFile(path, labelPath)) {
        throw BadInput("expected another file for the labels than for the sound, found " + Quoted(labelPath));
    }
    OutputFile output(path, AudioFile::AccessFor(*format));
    AudioFile audio(output, *format, HeaderRate(*format, sound.sampleFreq), sound.samples.size());
    audio.Append(sound.samples);
    audio.Finish();
    std::vector<OutputFile*> files{&output};
    std::optional<OutputFile> labelOutput;
    if (!labelPath.empty()) {
        LabelFile labels(labelOutput.emplace(labelPath), sound.sampleFreq);
        for (const SoundMarker& marker : sound.markers) labels.Add(marker.sample, Printable(marker.text));
        labels.Finish(sound.samples.size());
        files.push_back(&*labelOutput);
    }
    OutputFile::Commit(files);
}

}  // namespace

void Sound::Write(const std::string& path, const std::string& labelPath) const {
    Translated([&] { WriteFiles(*this, path, labelPath); });
}

}  // namespace larynth
