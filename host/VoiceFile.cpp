// SPDX-License-Identifier: MIT
#include "host/VoiceFile.h"

#include "host/Errors.h"
#include "host/Json.h"

namespace larynth {
namespace {

void ReadNumber(const JsonValue& object, const char* key, double& target) {
    if (object.Has(key)) target = object[key].Number();
}

void ReadShelf(const JsonValue& voice, const char* key, Shelf& shelf) {
    if (!voice.Has(key)) return;
    const JsonValue object = voice[key];
    object.ExpectObject({"F", "G", "P3", "P4"});
    ReadNumber(object, "F", shelf.F);
    ReadNumber(object, "G", shelf.G);
    ReadNumber(object, "P3", shelf.P3);
    ReadNumber(object, "P4", shelf.P4);
}

}  // namespace

VoiceSettings ParseVoice(const std::string& text, const std::string& fileName) {
    const JsonValue voice = JsonValue::Parse(text, fileName);
    voice.ExpectObject({"pre_emphasis", "open_quotient", "low_shelf", "high_shelf", "wave"});
    VoiceSettings settings;
    ReadNumber(voice, "pre_emphasis", settings.preEmphasis);
    ReadNumber(voice, "open_quotient", settings.openQuotient);
    ReadShelf(voice, "low_shelf", settings.lowShelf);
    ReadShelf(voice, "high_shelf", settings.highShelf);
    if (voice.Has("wave")) {
        settings.wave = voice["wave"].Numbers();
        if (settings.wave.empty()) throw BadInput(fileName + ": /wave: expected numbers, found none");
    }
    return settings;
}

}  // namespace larynth
