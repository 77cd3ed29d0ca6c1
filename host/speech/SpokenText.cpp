// SPDX-License-Identifier: MIT
#include "host/speech/SpokenText.h"

#include <filesystem>

#include "host/Files.h"
#include "input/Text.h"

namespace larynth {
namespace {

SoundClass SoundClassOf(const PhoneEntry& entry) {
    switch (entry.kind) {
        case PhoneClass::Vowel:
            return SoundClass::Vowel;
        case PhoneClass::Diphthong:
            return SoundClass::Diphthong;
        case PhoneClass::Glide:
            return SoundClass::Glide;
        case PhoneClass::Nasal:
            return SoundClass::Nasal;
        case PhoneClass::Fricative:
        case PhoneClass::Aspirate:
            return entry.voiced ? SoundClass::VoicedFricative : SoundClass::VoicelessFricative;
        case PhoneClass::Stop:
        case PhoneClass::Affricate:
            return entry.voiced ? SoundClass::VoicedStop : SoundClass::VoicelessStop;
        case PhoneClass::Pause:
            break;
    }
    return SoundClass::Pause;
}

/// What a table's phones are to a front end. The table must outlive the set.
PhoneSet PhonesOf(const PhoneTable& table) {
    PhoneSet phones;
    for (const auto& [name, entry] : table.Entries())
        phones.emplace(name, PhoneOfTable(entry.name, SoundClassOf(entry)));
    return phones;
}

/// What a file gives; nothing without a name.
template <class Parse>
auto Parsed(const std::string& path, Parse parse) {
    std::optional<decltype(parse(std::declval<std::istream&>(), path))> parsed;
    if (path.empty()) return parsed;
    InputFile file(path, InputFile::Use::Once);
    parsed.emplace(parse(file.Stream(), path));
    return parsed;
}

std::string SpeakerNames() {
    std::string names;
    for (const std::string& name : Speaker::Names()) names += (names.empty() ? "" : ", ") + name;
    return names;
}

}  // namespace

std::optional<TextForm> FindTextForm(std::string_view name) {
    for (const auto& [known, form] : {std::pair{"text", TextForm::Text},
                                      {"arpabet", TextForm::Arpabet},
                                      {"ipa", TextForm::Ipa},
                                      {"ssml", TextForm::Ssml}}) {
        if (name == known) return form;
    }
    return std::nullopt;
}

Speaker FindSpeaker(const std::string& nameOrFile, const std::string& what) {
    if (const auto known = Speaker::Find(nameOrFile)) return *known;
    if (std::filesystem::exists(nameOrFile)) return *Parsed(nameOrFile, &Speaker::Parse);
    throw BadInput(what + ": expected " + SpeakerNames() + " or a file, found " + Quoted(nameOrFile));
}

SpokenText::SpokenText(std::istream& text, const std::string& name, const SpokenTextOptions& options)
    : ownTable_(Parsed(options.phoneTableFile, &PhoneTable::Parse)),
      ownPhones_(ownTable_ ? PhonesOf(*ownTable_) : PhoneSet()),
      lexicon_(Parsed(options.lexiconFile, [](auto& input, auto& path) { return Lexicon(input, path); })),
      style_{ownTable_ ? *ownTable_ : PhoneTable::English(), options.speaker, options.settings},
      reader_(text, name, ReaderOptions(options)) {
    if (!Next()) throw BadInput(name + ": expected something to say, found nothing");
}

TextOptions SpokenText::ReaderOptions(const SpokenTextOptions& options) const {
    return {.form = options.form,
            .meanPitch = options.speaker.f0 * options.settings.pitch,
            .lexicon = lexicon_ ? &*lexicon_ : nullptr,
            .phones = ownTable_ ? &ownPhones_ : nullptr};
}

}  // namespace larynth
