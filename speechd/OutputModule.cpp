// SPDX-License-Identifier: MIT
#include "speechd/OutputModule.h"

#include <algorithm>
#include <exception>
#include <utility>

#include <larynth/Speech.h>

#include "host/Files.h"
#include "input/BadInput.h"
#include "input/Text.h"

namespace larynth::speechd {

struct OutputModule::Command {
    std::string_view name;
    Next (OutputModule::*answer)();
};

const OutputModule::Command OutputModule::kCommands[] = {
    {"INIT", &OutputModule::Initialize},        {"AUDIO", &OutputModule::TakeAudioSettings},
    {"LOGLEVEL", &OutputModule::TakeLogLevel},  {"SET", &OutputModule::TakeSettings},
    {"LIST VOICES", &OutputModule::ListVoices}, {"SPEAK", &OutputModule::SpeakMessage},
    {"CHAR", &OutputModule::SpeakCharacter},    {"KEY", &OutputModule::SpeakKey},
    {"SOUND_ICON", &OutputModule::SpeakIcon},   {"STOP", &OutputModule::StopSpeaking},
    {"PAUSE", &OutputModule::PauseSpeaking},    {"QUIT", &OutputModule::SayGoodbye},
};

OutputModule::OutputModule(CommandInput& input, EventOutput& output, std::string configurationFile)
    : input_(input), output_(output), configurationFile_(std::move(configurationFile)) {}

bool OutputModule::Run() {
    while (const auto line = input_.Line()) {
        const auto* const command = std::ranges::find(kCommands, std::string_view(*line), &Command::name);
        const bool isKnown = command != std::end(kCommands);
        if (!isKnown || (!speaking_ && command->answer != &OutputModule::Initialize)) {
            output_.Send("300 ERR UNKNOWN COMMAND");
            continue;
        }
        const Next next = (this->*command->answer)();
        if (next != Next::Command) return next == Next::Goodbye;
    }
    return true;
}

void OutputModule::ReadConfiguration() {
    if (configurationFile_.empty()) return;
    InputFile file(configurationFile_, InputFile::Use::Once);
    TextLines lines(file.Stream(), configurationFile_);
    while (lines.Next()) {
        const std::string_view line = Trimmed(lines.Line());
        if (line.empty() || line.starts_with('#')) continue;
        const std::size_t gap = line.find_first_of(kBlanks);
        if (line.substr(0, gap) != "Lexicon") throw BadInput(lines.At(line), "Lexicon \"FILE\" or a comment");
        const std::string_view value = gap < line.size() ? Trimmed(line.substr(gap)) : std::string_view();
        const bool isQuoted = value.size() > 2 && value.front() == '"' && value.back() == '"';
        if (!isQuoted) throw BadInput(lines.At(line), "Lexicon with the name of a file in quotation marks");
        const std::string name(value.substr(1, value.size() - 2));
        InputFile lexicon(name, InputFile::Use::Once);
        lexicon_.emplace(lexicon.Stream(), name);
    }
}

OutputModule::Next OutputModule::Initialize() try {
    LoadModules();
    ReadConfiguration();
    speaking_ = std::make_unique<SpeakingThread>(PhoneTable::English(), output_);
    output_.Send("299-Larynth: formant synthesis, English\n299 OK LOADED SUCCESSFULLY");
    return Next::Command;
} catch (const std::exception& failure) {
    output_.Send("399-" + Printable(failure.what()) + "\n399 ERR CANT INIT MODULE");
    return Next::Failure;
}

OutputModule::Next OutputModule::TakeAudioSettings() {
    output_.Send("207 OK RECEIVING AUDIO SETTINGS");
    const std::vector<std::string> lines = input_.Block();
    const bool playsItself = std::ranges::find(lines, "audio_output_method=server") != lines.end();
    output_.Send(playsItself ? "203 OK AUDIO INITIALIZED"
                             : "300-expected audio_output_method=server\n300 MODULE ERROR");
    return Next::Command;
}

OutputModule::Next OutputModule::TakeLogLevel() {
    output_.Send("207 OK RECEIVING LOGLEVEL SETTINGS");
    input_.Block();
    output_.Send("203 OK LOGLEVEL SET");
    return Next::Command;
}

OutputModule::Next OutputModule::TakeSettings() {
    output_.Send("203 OK RECEIVING SETTINGS");
    const char* answer = "203 OK SETTINGS RECEIVED";
    for (const std::string& line : input_.Block()) {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos) {
            answer = "302 ERROR BAD SYNTAX";
        } else if (!settings_.Set(line.substr(0, equals), line.substr(equals + 1))) {
            answer = "303 ERROR INVALID PARAMETER OR VALUE";
        }
    }
    output_.Send(answer);
    return Next::Command;
}

OutputModule::Next OutputModule::ListVoices() {
    std::string list;
    for (const std::string& name : Speaker::Names()) list += "200-" + name + "\ten-US\tnone\n";
    output_.Send(list + "200 OK VOICE LIST SENT");
    return Next::Command;
}

OutputModule::Next OutputModule::SpeakMessage() {
    output_.Send("202 OK RECEIVING MESSAGE");
    std::string text;
    for (const std::string& line : input_.Block()) text += line + '\n';
    TextOptions options = settings_.Text();
    if (text.starts_with("<speak")) options.form = TextForm::Ssml;
    return Speak(std::move(text), options);
}

// One line that is to be said; nothing where there are several, which is answered.
std::optional<std::string> OutputModule::OneLine() {
    output_.Send("202 OK RECEIVING MESSAGE");
    std::vector<std::string> lines = input_.Block();
    if (lines.size() == 1) return std::move(lines.front());
    output_.Send(lines.empty() ? "301 ERROR CANT SPEAK" : "305 DATA MORE THAN ONE LINE");
    return std::nullopt;
}

OutputModule::Next OutputModule::SpeakCharacter() {
    const auto character = OneLine();
    if (!character) return Next::Command;
    TextOptions options = settings_.Text();
    options.punctuation = Punctuation::All;
    options.spell = CharacterCount(*character) == 1;  // some have a name: "space"
    return Speak(*character, options);
}

// "shift_a": names of keys and a character, joined.
OutputModule::Next OutputModule::SpeakKey() {
    const auto key = OneLine();
    if (!key) return Next::Command;
    const std::size_t last = key->size() < 2 ? 0 : key->find_last_of('_', key->size() - 2) + 1;
    std::string text = key->substr(0, last);
    std::ranges::replace(text, '_', ' ');
    TextOptions options = settings_.Text();
    options.punctuation = Punctuation::All;
    options.spell = text.empty() && CharacterCount(*key) == 1;
    return Speak(text + key->substr(last), options);
}

OutputModule::Next OutputModule::SpeakIcon() {
    auto icon = OneLine();
    if (!icon) return Next::Command;
    std::ranges::replace_if(
        *icon, [](char c) { return c == '-' || c == '_'; }, ' ');
    return Speak(*icon, settings_.Text());
}

OutputModule::Next OutputModule::Speak(std::string text, const TextOptions& options) {
    if (!speaking_->IsFree()) {
        output_.Send("301 ERROR CANT SPEAK");
        return Next::Command;
    }
    output_.Send("200 OK SPEAKING");
    Message message{std::move(text), options, settings_.ChosenSpeaker(), settings_.Speech()};
    message.options.meanPitch = message.speaker.f0 * message.settings.pitch;
    message.options.lexicon = lexicon_ ? &*lexicon_ : nullptr;
    speaking_->Begin(std::move(message));
    return Next::Command;
}

OutputModule::Next OutputModule::StopSpeaking() {
    speaking_->Stop();
    return Next::Command;
}

OutputModule::Next OutputModule::PauseSpeaking() {
    speaking_->Pause();
    return Next::Command;
}

OutputModule::Next OutputModule::SayGoodbye() {
    speaking_.reset();
    output_.Send("210 OK QUIT");
    return Next::Goodbye;
}

}  // namespace larynth::speechd
