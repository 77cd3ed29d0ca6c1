// SPDX-License-Identifier: MIT
#include "host/command/SayCommand.h"

#include <sstream>

#include <larynth/Speech.h>

#include "host/command/Options.h"
#include "host/command/SpeechOutputs.h"
#include "host/command/Terminal.h"
#include "host/speech/SpokenText.h"
#include "input/Text.h"

namespace larynth {
namespace {

constexpr char kExample[] =
    "Example:\n  larynth say \"Hello, world.\"\n  larynth say -f book.txt --rate 240 --voice woman -o "
    "book.flac";

TextForm ParseForm(const std::string& text) {
    if (const auto form = FindTextForm(text)) return *form;
    Refuse("--input", "text, arpabet, ipa or ssml", text);
}

/// A factor of the voice on the command line.
void AddFactor(CLI::App& command, const std::string& name, double& target, double lowest, double highest,
               const std::string& help) {
    const auto parse = [=](const std::string& text) {
        const std::optional<double> number = ParseNumber(text);
        return number >= lowest && number <= highest ? number : std::nullopt;
    };
    AddNumber(command, name, target, parse,
              "a number from " + ShortestText(lowest) + " to " + ShortestText(highest), help)
        ->type_name("X");
}

std::string Joined(const std::vector<std::string>& words, const char* between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

void ListVoices() {
    for (const std::string& name : Speaker::Names()) WriteToStandardOutput(name + '\n');
}

}  // namespace

SayCommand::SayCommand(CLI::App& program)
    : command_(program.add_subcommand("say", "Turn a text into speech, and play it")) {
    AddInputOptions();
    AddOutputOptions();
    AddVoiceOptions();
    command_->footer(kExample);
    command_->callback([this] { Run(); });
}

void SayCommand::AddInputOptions() {
    command_->add_option("TEXT", words_, "What to say; - is standard input");
    command_->add_option("-f,--file", textFile_, "What to say; - is standard input")
        ->type_name("FILE")
        ->check(RefuseNoName);
    command_
        ->add_option_function<std::string>(
            "--input", [this](const std::string& text) { form_ = ParseForm(text); },
            "What the text is: English, phones or marked up (default text)")
        ->type_name("text|arpabet|ipa|ssml");
    command_->add_option("--lexicon", lexiconFile_, "Pronunciations of your own")
        ->type_name("FILE")
        ->check(RefuseNoName);
    command_->add_option("--phone-table", phoneTableFile_, "Sounds of another language")
        ->type_name("FILE")
        ->check(RefuseNoName);
}

void SayCommand::AddOutputOptions() {
    command_
        ->add_option("-o,--output", output_,
                     "Write the sound instead, by extension .wav, .flac or .raw; - writes raw samples "
                     "(16-bit, little-endian, 16000 Hz) to standard output")
        ->type_name("FILE")
        ->check(RefuseNoName);
    command_->add_option("--labels", labels_, "Words and marks with their times: start, end (seconds), text")
        ->type_name("FILE")
        ->check(RefuseNoName);
    command_
        ->add_option("--table", table_, "Write the frames, for larynth render; plays nothing without -o too")
        ->type_name("FILE")
        ->check(RefuseNoName);
    command_->add_flag("--phones", listsPhones_, "Print the phones, make no sound")->excludes("--output");
    command_->add_flag("--voices", listsVoices_, "List the voices");
}

void SayCommand::AddVoiceOptions() {
    command_->add_option("--voice", voice_, "Who speaks: one that --voices lists, or a file of your own")
        ->type_name(CLI::detail::join(Speaker::Names(), "|") + "|FILE")
        ->check(RefuseNoName);
    AddFactor(*command_, "--rate", settings_.rate, SpeechSettings::kSlowest, SpeechSettings::kFastest,
              "Words a minute (default 175)");
    AddFactor(*command_, "--pitch", settings_.pitch, 0.25, 4.0, "Factor on the height of the voice");
    AddFactor(*command_, "--range", settings_.range, 0.0, 4.0,
              "Factor on how far the voice rises and falls; 0 is monotone");
    AddFactor(*command_, "--volume", settings_.volume, 0.0, 10.0, "Factor on the amplitude");
}

std::string SayCommand::TextFile() const {
    const bool readsWords = !words_.empty() && words_ != std::vector<std::string>{"-"};
    if (words_.empty() == textFile_.empty()) throw BadInput("say: expected either TEXT or --file");
    return readsWords ? "" : textFile_.empty() ? "-" : textFile_;
}

void SayCommand::RequireOwnFiles() const {
    UsedFiles files;
    if (const std::string text = TextFile(); !text.empty()) files.AddInput("the input", text);
    if (!Speaker::Find(voice_)) files.AddInput("the voice", voice_);
    if (!lexiconFile_.empty()) files.AddInput("the lexicon", lexiconFile_);
    if (!phoneTableFile_.empty()) files.AddInput("the phone table", phoneTableFile_);
    if (!output_.empty()) {
        AudioFormatOfOutput(output_);
        files.AddOutput("--output", "the output", output_);
    }
    if (!table_.empty()) files.AddOutput("--table", "the table", table_);
    if (!labels_.empty()) files.AddOutput("--labels", "the labels", labels_);
    const bool makesSound = !listsPhones_ && (table_.empty() || !output_.empty());
    if (!makesSound && !labels_.empty()) throw BadInput("--labels: expected sound to label, see --output");
}

void SayCommand::Run() const {
    if (listsVoices_) return ListVoices();
    RequireOwnFiles();
    const std::string path = TextFile();
    if (path.empty()) {
        std::istringstream text(Joined(words_, " "));
        return SayAll(text, "TEXT", nullptr);
    }
    InputFile file = InputFile::FromArgument(path, InputFile::Use::Once);
    SayAll(file.Stream(), file.Name(), &file);
}

std::vector<std::unique_ptr<SpeechOutput>> SayCommand::NewOutputs(const SpeechStyle& style) const {
    std::vector<std::unique_ptr<SpeechOutput>> outputs;
    if (!table_.empty()) outputs.push_back(std::make_unique<FrameList>(style, table_));
    if (listsPhones_) {
        outputs.push_back(std::make_unique<PhoneList>(style.table));
    } else if (table_.empty() || !output_.empty()) {
        LoadModules();
        outputs.push_back(std::make_unique<SoundOutput>(style, output_, labels_));
    }
    return outputs;
}

void SayCommand::SayAll(std::istream& text, const std::string& name, const InputFile* file) const {
    // Nothing is opened for a text that cannot be said.
    SpokenText spoken(text, name,
                      {.form = form_,
                       .lexiconFile = lexiconFile_,
                       .phoneTableFile = phoneTableFile_,
                       .speaker = FindSpeaker(voice_, "--voice"),
                       .settings = settings_});
    const auto outputs = NewOutputs(spoken.Style());
    const bool showsProgress = file != nullptr && !output_.empty() && ProgressBar::IsWanted();
    ProgressBar bar(showsProgress ? file->Size() : 0);
    do {
        for (const auto& output : outputs) output->Say(spoken.Current());
        if (showsProgress) bar.Show(file->Consumed());
    } while (spoken.Next());
    std::vector<OutputFile*> files;
    for (const auto& output : outputs) output->Finish(files);
    OutputFile::Commit(files);
}

}  // namespace larynth
