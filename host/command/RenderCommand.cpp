// SPDX-License-Identifier: MIT
#include "host/command/RenderCommand.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <limits>
#include <thread>

#include "host/Files.h"
#include "host/command/Options.h"
#include "host/command/Terminal.h"
#include "input/BadInput.h"
#include "input/Text.h"

namespace larynth {
namespace {

constexpr std::int64_t kMostProcesses = 1000;
constexpr std::int64_t kMostSeed = std::numeric_limits<std::uint32_t>::max();

// The file of "wave:FILE"; nothing for the standard source.
std::optional<std::string> ParseSource(const std::string& text) {
    constexpr std::string_view kWave = "wave:";
    if (text == "standard") return std::nullopt;
    if (text.starts_with(kWave) && text.size() > kWave.size()) return text.substr(kWave.size());
    Refuse("--source", "standard or wave:FILE", text);
}

TractForm ParseTract(const std::string& text) {
    if (text == "resonator") return TractForm::Resonator;
    if (text == "filter") return TractForm::Filter;
    Refuse("--tract", "resonator or filter", text);
}

RenderCommand::InputForm ParseInputForm(const std::string& text) {
    using Form = RenderCommand::InputForm;
    for (const auto& [name, form] :
         {std::pair{"table", Form::Table}, {"targets", Form::Targets}, {"packets", Form::Packets}}) {
        if (text == name) return form;
    }
    Refuse("--input", "table, targets or packets", text);
}

// The extension of a folder's sounds.
std::string ParseFormat(const std::string& text) {
    const std::string extension = '.' + text;
    if (!AudioFormatOf('-' + extension)) Refuse("--format", "wav, flac or raw", text);
    return extension;
}

/// All frames into the audio file and, where there is one, the label file. The place of the first frame after
/// which the sound is not finite, which the samples do not show; empty: none.
/// The bar counts to `barLength`.
std::string RenderFrames(RenderInput& frames, Synthesizer& synthesizer, std::uint64_t barLength,
                         AudioFile& audio, LabelFile* labels) {
    ProgressBar bar(barLength);
    std::uint64_t samples = 0, count = 0;
    std::string notFinite;
    while (frames.Next()) {
        if (labels != nullptr && !frames.Marker().empty()) labels->Add(samples, frames.Marker());
        const std::span<const std::int16_t> rendered = frames.Render(synthesizer);
        audio.Append(rendered);
        samples += rendered.size();
        if (notFinite.empty() && !synthesizer.IsFinite()) notFinite = frames.Place();
        bar.Show(++count);
    }
    audio.Finish();
    if (labels != nullptr) labels->Finish(samples);
    return notFinite;
}

void Summarize(const std::string& output, const Extent& extent, double seconds) {
    const double length = static_cast<double>(extent.samples) / extent.sampleFreq;
    const std::string name = output == "-" ? "standard output" : output;
    Print(name + ": " + FixedText(length, 2) + " s of sound at " + ShortestText(extent.sampleFreq) +
          " Hz, made in " + FixedText(seconds, 3) + " s, " + FixedText(length / seconds, 0) +
          " times faster than real time");
}

}  // namespace

RenderCommand::RenderCommand(CLI::App& program)
    : command_(program.add_subcommand("render", "Turn a frame table, targets or a packet file into sound")) {
    AddFileOptions();
    AddFolderOptions();
    AddInputOptions();
    AddSoundOptions();
    command_->footer(
        "Examples:\n  larynth render table.csv -o sound.wav --labels words.txt\n"
        "  larynth render *.csv -o sounds/ --jobs 8");
    command_->callback([this] { Run(); });
}

void RenderCommand::AddFileOptions() {
    command_
        ->add_option("INPUT", inputs_,
                     "Frame table, targets or packet file; - is standard input; several go into a folder")
        ->required()
        ->check(RefuseNoName)
        ->type_name("FILE");
    command_
        ->add_option("-o,--output", output_,
                     "Sound, by extension .wav, .flac or .raw; - writes raw samples "
                     "(16-bit, little-endian) to standard output; a folder gets a sound of each input")
        ->required()
        ->check(RefuseNoName)
        ->type_name("FILE");
    command_
        ->add_option("--labels", labels_,
                     "Markers with their times: start, end (seconds), text; a folder for several inputs")
        ->check(RefuseNoName)
        ->type_name("FILE");
    command_->add_flag("--verbose", verbose_, "Say what was made, also when standard error is no terminal");
}

void RenderCommand::AddFolderOptions() {
    const auto processes = [](const std::string& text) { return ParseInteger(text, 1, kMostProcesses); };
    AddNumber(*command_, "--jobs", folder_.processes, processes, "a whole number from 1 to 1000",
              "Into a folder: sounds made at a time, each in a process (default: one for each processor)")
        ->type_name("N");
    command_
        ->add_option_function<std::string>(
            "--format", [this](const std::string& text) { folder_.extension = ParseFormat(text); },
            "Into a folder: format of the sounds (default wav)")
        ->type_name("wav|flac|raw");
    command_->add_flag("--force", folder_.force,
                       "Into a folder: make also the sounds that are there and not older than their input");
}

void RenderCommand::AddInputOptions() {
    const auto frameLen = [](const std::string& text) { return ParseInteger(text, 0, kMaxFrameLen); };
    command_
        ->add_option_function<std::string>(
            "--input", [this](const std::string& text) { inputForm_ = ParseInputForm(text); },
            "What INPUT is (default table)")
        ->type_name("table|targets|packets");
    AddNumber(*command_, "--frame-len", defaults_.frameLen, frameLen, "a whole number from 0 to 1000000",
              "Samples of a frame, where the input has no FrameLen (from targets 5 ms)")
        ->type_name("N");
    AddNumber(*command_, "--sample-freq", defaults_.sampleFreq, ParseSampleFreq, kSampleFreqRange,
              "Sample frequency, where the input has no SampleFreq (default 11025)")
        ->type_name("HZ");
}

void RenderCommand::AddSoundOptions() {
    const auto seed = [](const std::string& text) { return ParseInteger(text, 0, kMostSeed); };
    AddNumber(*command_, "--volume", settings_.volume, ParseNumber, "a number", "Linear factor, applied last")
        ->type_name("X");
    AddNumber(*command_, "--output-gain", settings_.outputGain, ParseNumber, "a number",
              "Linear factor on the sum of both tracts")
        ->type_name("X");
    AddNumber(*command_, "--seed", settings_.seed, seed, "a whole number from 0 to 4294967295",
              "State of the noise generator at the start (default 1)")
        ->type_name("N");
    command_
        ->add_option_function<std::string>(
            "--tract", [this](const std::string& text) { settings_.tract = ParseTract(text); },
            "Form of the cascade tract (default resonator)")
        ->type_name("resonator|filter");
    command_
        ->add_option_function<std::string>(
            "--source", [this](const std::string& text) { waveFile_ = ParseSource(text); },
            "Voicing source; FILE: the open phase of one period, one number a line (default standard)")
        ->type_name("standard|wave:FILE");
    command_->add_option("--voice", voiceFile_, "Voice: open quotient, output filters, a source (JSON)")
        ->check(RefuseNoName)
        ->type_name("FILE");
}

void RenderCommand::Run() const {
    if (inputForm_ == InputForm::Packets && defaults_.frameLen) {
        Say("--frame-len does not apply to packets: their conversion sets it");
    }
    if (IsForFolder()) return RenderAll();
    for (const char* option : {"--jobs", "--format", "--force"}) {
        if (command_->count(option) == 0) continue;
        throw BadInput(std::string(option) + ": expected a folder as --output, found " + output_);
    }
    RenderOne({inputs_.front(), output_, labels_}, true);
}

bool RenderCommand::IsForFolder() const {
    if (AudioFormatOf(output_)) {
        if (inputs_.size() == 1) return false;
        throw BadInput("--output: expected a folder for several inputs, found " + output_);
    }
    return inputs_.size() > 1 || output_.ends_with('/') || std::filesystem::is_directory(output_);
}

void RenderCommand::RenderAll() const {
    RenderFolder folder = folder_;
    folder.output = output_;
    folder.labels = labels_;
    if (folder.extension.empty()) folder.extension = ".wav";
    static_cast<void>(ReadSettings(kDefaultSampleFreq));  // what is wrong with its files is said once
    for (const auto& file : {voiceFile_, waveFile_}) {
        if (file) folder.settings.push_back(*file);
    }
    if (folder.processes == 0) folder.processes = std::max(1U, std::thread::hardware_concurrency());
    RenderIntoFolder(folder, inputs_, [this](const RenderJob& job) { RenderOne(job, false); });
}

void RenderCommand::RenderOne(const RenderJob& job, bool isAlone) const {
    const auto start = std::chrono::steady_clock::now();
    const bool isWatched = isAlone && ProgressBar::IsWanted();
    AudioFormatOfOutput(job.output);
    RequireOwnFiles(job);
    // Read twice: the first time finds what is wrong, and how long the sound will be.
    InputFile input = InputFile::FromArgument(job.input);
    const Extent extent = ExtentOf(*NewInput(input));
    input.Rewind();
    Render(*NewInput(input), extent, job, isWatched);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (verbose_ || isWatched) Summarize(job.output, extent, taken.count());
}

void RenderCommand::RequireOwnFiles(const RenderJob& job) const {
    UsedFiles files;
    files.AddInput("the input", job.input);
    if (voiceFile_) files.AddInput("the voice", *voiceFile_);
    if (waveFile_) files.AddInput("the waveform", *waveFile_);
    files.AddOutput("--output", "the output", job.output);
    if (!job.labels.empty()) files.AddOutput("--labels", "the labels", job.labels);
}

std::unique_ptr<RenderInput> RenderCommand::NewInput(InputFile& file) const {
    if (inputForm_ == InputForm::Packets) {
        return std::make_unique<PacketInput>(file.Stream(), file.Name(), defaults_.sampleFreq);
    }
    const FrameForm form = inputForm_ == InputForm::Table ? FrameForm::Table : FrameForm::Targets;
    return std::make_unique<FrameInput>(FrameReader(file.Stream(), file.Name(), form, defaults_));
}

SynthesizerSettings RenderCommand::ReadSettings(double sampleFreq) const {
    SynthesizerSettings settings = settings_;
    settings.sampleFreq = sampleFreq;
    if (voiceFile_) settings.voice = ReadVoice(*voiceFile_);
    if (waveFile_) settings.wave = ReadWaveform(*waveFile_);
    return settings;
}

void RenderCommand::Render(RenderInput& frames, const Extent& extent, const RenderJob& job,
                           bool showsBar) const {
    const AudioFormat format = AudioFormatOfOutput(job.output);
    const int headerRate = HeaderRate(format, extent.sampleFreq);
    if (format != AudioFormat::Raw && headerRate != extent.sampleFreq) {
        Say("the file says " + std::to_string(headerRate) + " Hz for a sample frequency of " +
            ShortestText(extent.sampleFreq) + " Hz");
    }
    Synthesizer synthesizer(ReadSettings(extent.sampleFreq));
    OutputFile audioOutput(job.output, AudioFile::AccessFor(format));
    AudioFile audio(audioOutput, format, headerRate, extent.samples);
    std::optional<OutputFile> labelOutput;
    std::optional<LabelFile> labels;
    if (!job.labels.empty()) labels.emplace(labelOutput.emplace(job.labels), extent.sampleFreq);
    const std::string notFinite =
        RenderFrames(frames, synthesizer, showsBar ? extent.frames : 0, audio, labels ? &*labels : nullptr);
    if (labelOutput) {
        OutputFile::Commit({&audioOutput, &*labelOutput});
    } else {
        audioOutput.Commit();
    }
    if (!notFinite.empty()) Say(notFinite + ": the sound is not finite at the end of this frame");
}

}  // namespace larynth
