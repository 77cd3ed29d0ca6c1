// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <span>
#include <sstream>

#include <larynth/Speech.h>

#include "face/Failure.h"
#include "host/Files.h"
#include "input/Text.h"

namespace larynth {
namespace {

using nlohmann::json;

constexpr std::size_t kMostVoiceBytes = 64 << 20;

constexpr std::array<std::string_view, 4> kShelfKeys{"F", "G", "P3", "P4"};
constexpr std::array<std::string_view, 5> kVoiceKeys{"pre_emphasis", "open_quotient", "low_shelf",
                                                     "high_shelf", "wave"};

/// Takes a voice from a JSON file's text, token by token, and raises BadInput for the first one that does not
/// belong there. Nothing nests deeper than a shelf or the waveform, however the text goes on.
class VoiceReader : public json::json_sax_t {
  public:
    VoiceReader(std::string_view text, const std::string& fileName)
        : text_(text), fileName_(fileName), stream_(std::string(text)) {}

    VoiceSettings Read() {
        json::sax_parse(stream_, this);
        return settings_;
    }

    bool null() override { Fail("null"); }
    bool boolean(bool value) override { Fail(value ? "true" : "false"); }
    bool string(string_t& value) override { Fail(Quoted(value)); }
    bool binary(binary_t&) override { Fail("bytes"); }
    bool number_integer(number_integer_t value) override { return Take(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return Take(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t&) override { return Take(value); }

    bool start_object(std::size_t) override {
        if (level_ == Level::File) {
            level_ = Level::Voice;
        } else if (level_ == Level::Voice && IsShelf(key_)) {
            level_ = Level::Shelf;
            shelfKeys_.clear();
            shelf_ = key_ == "low_shelf" ? &settings_.lowShelf : &settings_.highShelf;
        } else {
            Fail("an object");
        }
        return Passed();
    }

    bool key(string_t& key) override {
        const bool inShelf = level_ == Level::Shelf;
        const auto known = inShelf ? std::span<const std::string_view>(kShelfKeys) : kVoiceKeys;
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            std::string list;
            for (const std::string_view name : known) list.append(name).append(", ");
            throw BadInput(Here(), "one of the keys " + list + "found " + Quoted(key));
        }
        if (!(inShelf ? shelfKeys_ : voiceKeys_).insert(key).second) {
            throw BadInput(Here(), "every key once, found a second " + Quoted(key));
        }
        key_ = key;
        return Passed();
    }

    bool end_object() override {
        level_ = level_ == Level::Shelf ? Level::Voice : Level::File;
        return Passed();
    }

    bool start_array(std::size_t) override {
        if (level_ != Level::Voice || key_ != "wave") Fail("an array");
        level_ = Level::Wave;
        return Passed();
    }

    bool end_array() override {
        if (settings_.wave.empty()) throw BadInput(Here(), "numbers, found none");
        level_ = Level::Voice;
        return Passed();
    }

    bool parse_error(std::size_t position, const std::string&, const json::exception& error) override {
        if (text_.find_first_not_of(" \t\r\n") == text_.npos) Fail("an empty file");
        constexpr int kNumberOutOfRange = 406;  // libraries' number of it
        if (error.id == kNumberOutOfRange) throw BadInput(Here(), "a number that fits a double");
        throw BadInput(At(position > 0 ? position - 1 : 0), "JSON");
    }

  private:
    enum class Level { File, Voice, Shelf, Wave };

    static bool IsShelf(const std::string& key) { return key == "low_shelf" || key == "high_shelf"; }

    // What the place that is reached is for.
    const char* Expected() const {
        if (level_ == Level::File) return "an object";
        if (level_ == Level::Voice && IsShelf(key_)) return "an object";
        if (level_ == Level::Voice && key_ == "wave") return "an array of numbers";
        return "a number";
    }

    double* Target() {
        if (level_ == Level::Wave) return &settings_.wave.emplace_back();
        if (level_ == Level::Shelf) {
            return key_ == "F"    ? &shelf_->F
                   : key_ == "G"  ? &shelf_->G
                   : key_ == "P3" ? &shelf_->P3
                                  : &shelf_->P4;
        }
        if (level_ != Level::Voice) return nullptr;
        if (key_ == "pre_emphasis") return &settings_.preEmphasis;
        return key_ == "open_quotient" ? &settings_.openQuotient : nullptr;
    }

    bool Take(double number) {
        double* const target = Target();
        if (target == nullptr) Fail("the number " + ShortestText(number));
        *target = number;
        return Passed();
    }

    [[noreturn]] void Fail(const std::string& found) const {
        throw BadInput(Here(), std::string(Expected()) + ", found " + found);
    }

    // The parser has read the token, and of a number the character behind it, too.
    bool Passed() {
        const std::streamoff read = stream_.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in);
        passed_ = read < 0 ? text_.size() : static_cast<std::size_t>(read);
        return true;
    }

    // Where the token begins.
    TextPosition Here() const { return At(text_.find_first_not_of(" \t\r\n:,", passed_)); }

    TextPosition At(std::size_t byte) const {
        const std::string_view before = text_.substr(0, byte);
        const std::size_t lineStart = before.rfind('\n') + 1;  // 0 in the first line
        return {fileName_, std::count(before.begin(), before.end(), '\n') + 1,
                static_cast<std::int64_t>(CharacterCount(before.substr(lineStart))) + 1};
    }

    std::string_view text_;
    const std::string& fileName_;
    std::istringstream stream_;
    std::size_t passed_ = 0;  // bytes up to here belong to tokens before
    VoiceSettings settings_;
    Level level_ = Level::File;
    std::string key_;  // the one that was read last
    std::set<std::string> voiceKeys_, shelfKeys_;
    Shelf* shelf_ = nullptr;
};

Waveform WaveformIn(std::istream& input, const std::string& fileName) {
    Waveform wave;
    TextLines lines(input, fileName);
    while (lines.Next()) {
        const std::string_view text = Trimmed(lines.Line());
        if (text.empty()) continue;
        const std::optional<double> number = ParseNumber(text);
        if (!number) throw BadInput(lines.At(text), "a number, found " + Quoted(text));
        wave.push_back(*number);
    }
    if (wave.empty()) throw BadInput(lines.At(1), "a number, found the end");
    return wave;
}

}  // namespace

Waveform ParseWaveform(std::istream& input, const std::string& fileName) {
    return Translated([&] { return WaveformIn(input, fileName); });
}

Waveform ReadWaveform(const std::string& path) {
    return Translated([&] { return WaveformIn(InputFile(path).Stream(), path); });
}

VoiceSettings ParseVoice(const std::string& text, const std::string& fileName) {
    return Translated([&] { return VoiceReader(text, fileName).Read(); });
}

VoiceSettings ReadVoice(const std::string& path) {
    return Translated([&] { return ParseVoice(InputFile(path).ReadAll(kMostVoiceBytes), path); });
}

}  // namespace larynth
