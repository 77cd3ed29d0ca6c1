// SPDX-License-Identifier: MIT
#include "host/command/RenderCommand.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <limits>

#include <larynth/Runtime.h>

#include "host/Errors.h"
#include "host/Files.h"
#include "host/OwnModules.h"
#include "host/command/ProgressBar.h"
#include "host/tables/Text.h"

namespace larynth {
namespace {

constexpr std::int64_t kMostSeed = std::numeric_limits<std::uint32_t>::max();

[[noreturn]] void Refuse(const std::string& option, const std::string& expected, const std::string& found) {
    throw CLI::ValidationError(option, "expected " + expected + ", found \"" + found + "\"");
}

// Numbers on the command line follow the same grammar as in a table.
template <class Number, class Parse>
CLI::Option* AddNumber(CLI::App& command, const std::string& name, std::optional<Number>& target, Parse parse,
                       const std::string& expected, const std::string& help) {
    return command.add_option_function<std::string>(
        name,
        [&target, parse, name, expected](const std::string& text) {
            const auto number = parse(text);
            if (!number) Refuse(name, expected, text);
            target = static_cast<Number>(*number);
        },
        help);
}

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

/// Also by different names of one file.
bool IsSameFile(const std::string& one, const std::string& other) {
    const auto resolved = [](const std::string& name) {
        std::error_code ignored;
        return std::filesystem::weakly_canonical(std::filesystem::absolute(name, ignored), ignored);
    };
    return resolved(one) == resolved(other);
}

}  // namespace

RenderCommand::RenderCommand(CLI::App& program)
    : command_(program.add_subcommand("render", "Turn a frame table or a packet file into sound")) {
    AddFileOptions();
    AddInputOptions();
    AddSoundOptions();
    command_->callback([this] { Run(); });
}

void RenderCommand::AddFileOptions() {
    command_->add_option("INPUT", input_, "Frame table or packet file; - is standard input")->required();
    command_
        ->add_option("-o,--output", output_,
                     "Sound, by extension .wav, .flac or .raw; - writes raw samples "
                     "(16-bit, little-endian) to standard output")
        ->required()
        ->type_name("FILE");
    command_->add_option("--labels", labels_, "Markers with their times: start, end (seconds), text")
        ->type_name("FILE");
    command_->add_flag("--verbose", verbose_, "Say what was made, also when standard error is no terminal");
}

void RenderCommand::AddInputOptions() {
    const auto frameLen = [](const std::string& text) {
        return ParseInteger(text, 0, FrameTableParser::kMaxFrameLen);
    };
    const auto sampleFreq = [](const std::string& text) {
        const auto number = ParseNumber(text);
        return number && *number > 0 ? number : std::nullopt;
    };
    command_
        ->add_option_function<std::string>(
            "--input",
            [this](const std::string& text) {
                if (text != "table" && text != "packets") Refuse("--input", "table or packets", text);
                inputForm_ = text == "table" ? InputForm::Table : InputForm::Packets;
            },
            "What INPUT is (default table)")
        ->type_name("table|packets");
    AddNumber(*command_, "--frame-len", defaults_.frameLen, frameLen, "a whole number from 0 to 1000000",
              "Samples of a frame, where the input has no FrameLen")
        ->type_name("N");
    AddNumber(*command_, "--sample-freq", defaults_.sampleFreq, sampleFreq, "a number above 0",
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
    AddNumber(*command_, "--seed", seed_, seed, "a whole number from 0 to 4294967295",
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
        ->type_name("FILE");
}

void RenderCommand::Run() const {
    const auto start = std::chrono::steady_clock::now();
    const AudioFormat format = ChosenFormat();
    LoadOwnModules();
    const Utterance utterance = ReadUtterance();
    const SynthesizerSettings settings = ReadSettings();
    const double sampleFreq = SampleFreqOf(utterance);
    const int headerRate = HeaderRate(format, sampleFreq);
    const Sound sound = Render(utterance, settings);
    Write(sound, sampleFreq, format, headerRate);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (verbose_ || ProgressBar::IsWanted()) Summarize(sound, sampleFreq, taken.count());
}

AudioFormat RenderCommand::ChosenFormat() const {
    if (!labels_.empty() && IsSameFile(labels_, output_))
        throw BadInput("--labels: expected another file than the output, found " + labels_);
    const std::optional<AudioFormat> format = AudioFormatOf(output_);
    if (!format) throw BadInput("--output: expected - or a name in .wav, .flac or .raw, found " + output_);
    return *format;
}

Utterance RenderCommand::ReadUtterance() const {
    InputFile file = InputFile::FromArgument(input_);
    if (inputForm_ == InputForm::Table) {
        const ItemVocabulary vocabulary = ItemVocabulary::OfNewPacket();
        return FrameTableParser(file.Stream(), file.Name(), vocabulary, defaults_).Parse();
    }
    if (defaults_.frameLen) {
        std::fputs("larynth: --frame-len does not apply to packets: their conversion sets it\n", stderr);
    }
    PacketFile packets;
    packets.sampleFreq = defaults_.sampleFreq.value_or(packets.sampleFreq);
    packets.packets = ParsePackets(file.ReadAll(), file.Name());
    return packets;
}

SynthesizerSettings RenderCommand::ReadSettings() const {
    SynthesizerSettings settings = settings_;
    if (voiceFile_) settings.voice = ParseVoice(InputFile(*voiceFile_).ReadAll(), *voiceFile_);
    if (waveFile_) settings.wave = ParseWaveform(InputFile(*waveFile_).Stream(), *waveFile_);
    return settings;
}

Sound RenderCommand::Render(const Utterance& utterance, const SynthesizerSettings& settings) const {
    if (seed_) LarynthSeedNoise(*seed_);
    Synthesizer synthesizer(settings, SampleFreqOf(utterance));
    ProgressBar bar(FrameCountOf(utterance));
    Progress progress;
    if (ProgressBar::IsWanted()) progress = [&bar](std::size_t done) { bar.Show(done); };
    return larynth::Render(utterance, synthesizer, progress);
}

void RenderCommand::Write(const Sound& sound, double sampleFreq, AudioFormat format, int headerRate) const {
    if (format != AudioFormat::Raw && headerRate != sampleFreq) {
        std::fprintf(stderr, "larynth: the file says %d Hz for a sample frequency of %s Hz\n", headerRate,
                     ShortestText(sampleFreq).c_str());
    }
    // Both are complete before either takes its place.
    std::optional<OutputFile> labels;
    if (!labels_.empty()) {
        labels.emplace(labels_);
        labels->Write(LabelText(sound, sampleFreq));
    }
    OutputFile audio(output_);
    audio.Write(EncodeAudio(format, headerRate, sound.samples));
    audio.Finish();
    if (labels) labels->Finish();
    audio.Commit();
    if (labels) labels->Commit();
}

void RenderCommand::Summarize(const Sound& sound, double sampleFreq, double seconds) const {
    const double length = static_cast<double>(sound.samples.size()) / sampleFreq;
    const std::string name = output_ == "-" ? "standard output" : output_;
    std::fprintf(stderr, "%s: %s s of sound at %s Hz, made in %s s, %s times faster than real time\n",
                 name.c_str(), FixedText(length, 2).c_str(), ShortestText(sampleFreq).c_str(),
                 FixedText(seconds, 3).c_str(), FixedText(length / seconds, 0).c_str());
}

}  // namespace larynth
