// SPDX-License-Identifier: MIT
#include "module/RegistryScript.h"

#include <algorithm>
#include <array>

#include <larynth/ModuleRuntime.h>

#include "module/ScriptReader.h"

namespace larynth {

namespace {

using Token = ScriptReader::Token;

struct FlagName {
    std::string_view name;
    ScriptKey::Flag flag;
};

constexpr std::array kFlags{
    FlagName{"NoRemove", ScriptKey::Flag::kNoRemove},
    FlagName{"ForceRemove", ScriptKey::Flag::kForceRemove},
    FlagName{"Delete", ScriptKey::Flag::kDelete},
};

constexpr std::string_view kValue = "val";

// What a script is expected to hold, for errors.
constexpr char kRootKey[] = "a root key such as HKCR";
constexpr char kTypeLetter[] = "the type letter s";
constexpr char kKeyName[] = "a key name";

// Levels of lists, each of which is a level of calls for whoever walks the script.
constexpr int kMostLevels = 100;

ScriptKey::Flag FlagOf(std::string_view word) {
    const auto found =
        std::ranges::find_if(kFlags, [&](const FlagName& row) { return IsSameWord(word, row.name); });
    return found != kFlags.end() ? found->flag : ScriptKey::Flag::kNone;
}

std::string_view ReadRoot(ScriptReader& reader) {
    const Token word = reader.Word(kRootKey);
    for (const LarynthRegistryRoot& root : kLarynthRegistryRoots) {
        if (IsSameWord(word.text, root.Abbreviation) || IsSameWord(word.text, root.Name)) return root.Name;
    }
    reader.Fail(word, kRootKey);
}

std::string ReadText(ScriptReader& reader) {
    const Token type = reader.Word(kTypeLetter);
    if (!IsSameWord(type.text, "s")) reader.Fail(type, kTypeLetter);
    return reader.Meaning(reader.Quoted("a text in single quotes"));
}

ScriptValue ReadValue(ScriptReader& reader) {
    const Token name = reader.Word("the value's name");
    reader.Require('=', "\"=\" after the value's name");
    return {reader.Meaning(name), ReadText(reader)};
}

std::string NameOf(const ScriptReader& reader, const Token& token) {
    std::string name = reader.Meaning(token);
    if (name.find('\\') != name.npos) reader.Fail(token, "a key name without backslash");
    return name;
}

Token ReadKeyName(ScriptReader& reader, const char* expected) {
    return reader.Precedes('{') ? reader.BracedIdentifier() : reader.Word(expected);
}

void ReadList(ScriptReader& reader, ScriptKey& key, int level);

/// The rest of a key whose flag and name were read.
ScriptKey ReadKey(ScriptReader& reader, ScriptKey::Flag flag, const Token& name, int level) {
    ScriptKey key{.flag = flag, .name = NameOf(reader, name)};
    if (reader.Accept('=')) key.defaultValue = ReadText(reader);
    if (reader.Accept('{')) ReadList(reader, key, level + 1);
    return key;
}

void ReadEntry(ScriptReader& reader, ScriptKey& parent, int level) {
    Token name = ReadKeyName(reader, "a key, a value or \"}\"");
    if (IsSameWord(name.text, kValue)) {
        parent.values.push_back(ReadValue(reader));
        return;
    }
    const ScriptKey::Flag flag = FlagOf(name.text);
    if (flag != ScriptKey::Flag::kNone) {
        name = ReadKeyName(reader, kKeyName);
        // A flag before a value would otherwise pass for a key of that name.
        if (IsSameWord(name.text, kValue)) reader.Fail(name, kKeyName);
    }
    parent.subkeys.push_back(ReadKey(reader, flag, name, level));
}

/// The entries up to the closing brace.
void ReadList(ScriptReader& reader, ScriptKey& key, int level) {
    if (level > kMostLevels) reader.Fail("at most 100 levels of keys");
    while (!reader.Accept('}')) ReadEntry(reader, key, level);
}

}  // namespace

RegistryScript ParseRegistryScript(std::string_view text, std::string_view modulePath) {
    ScriptReader reader(text, modulePath);
    RegistryScript script;
    while (!reader.AtEnd()) {
        ScriptKey root{.flag = ScriptKey::Flag::kNoRemove, .name = std::string(ReadRoot(reader))};
        reader.Require('{', "\"{\" after the root key");
        ReadList(reader, root, 1);
        script.push_back(std::move(root));
    }
    return script;
}

}  // namespace larynth
