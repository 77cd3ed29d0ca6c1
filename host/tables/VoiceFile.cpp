// SPDX-License-Identifier: MIT
#include "host/tables/VoiceFile.h"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "host/tables/Text.h"

namespace larynth {
namespace {

using nlohmann::json;

TextPosition PositionOf(std::size_t byte, std::string_view text, const std::string& fileName) {
    const std::string_view before = text.substr(0, std::min(byte, text.size()));
    const std::size_t lineStart = before.rfind('\n') + 1;  // 0 in the first line
    const auto lines = std::count(before.begin(), before.end(), '\n');
    return {fileName, static_cast<int>(lines) + 1,
            static_cast<int>(CharacterCount(before.substr(lineStart))) + 1};
}

/// Refuses a key that stands twice in an object, of which the library would keep the last one.
class RepeatedKeys {
  public:
    explicit RepeatedKeys(const std::string& fileName) : fileName_(fileName) {}

    bool operator()(int /*depth*/, json::parse_event_t event, const json& value) {
        if (event == json::parse_event_t::object_start) open_.emplace_back();
        if (event == json::parse_event_t::object_end) open_.pop_back();
        if (event == json::parse_event_t::key) Note(value.get<std::string>());
        return true;
    }

  private:
    void Note(const std::string& key) {
        if (open_.back().insert(key).second) return;
        throw BadInput(fileName_ + ": expected every key once, found a second " + Quoted(key));
    }

    const std::string& fileName_;
    std::vector<std::set<std::string>> open_;  // the keys so far of every object around the parsed one
};

json ParseJson(const std::string& text, const std::string& fileName) {
    try {
        RepeatedKeys repeated(fileName);
        return json::parse(text, std::ref(repeated));
    } catch (const json::parse_error& error) {
        const std::size_t byte = error.byte > 0 ? error.byte - 1 : 0;
        throw BadInput(PositionOf(byte, text, fileName), "JSON");
    } catch (const json::out_of_range&) {
        throw BadInput(fileName + ": expected numbers that fit a double");
    }
}

/// A value of the file with its place: what does not meet an expectation is raised as BadInput with file,
/// place ("/low_shelf/G") and what was expected.
class Place {
  public:
    Place(const json& value, std::string file, std::string place)
        : value_(value), file_(std::move(file)), place_(std::move(place)) {}

    double Number() const {
        if (!value_.is_number()) Fail("a number");
        return value_.get<double>();
    }

    std::vector<double> Numbers() const {
        if (!value_.is_array()) Fail("an array of numbers");
        if (value_.empty()) throw BadInput(file_ + ": " + place_ + ": expected numbers, found none");
        std::vector<double> numbers;
        for (const json& element : value_) {
            numbers.push_back(Place(element, file_, place_ + '/' + std::to_string(numbers.size())).Number());
        }
        return numbers;
    }

    /// An object with no other keys than these.
    void ExpectObject(std::initializer_list<std::string_view> keys) const {
        if (!value_.is_object()) Fail("an object");
        std::string list;
        for (const std::string_view key : keys) list.append(list.empty() ? "" : ", ").append(key);
        for (const auto& [key, value] : value_.items()) {
            if (std::find(keys.begin(), keys.end(), key) != keys.end()) continue;
            throw BadInput(file_ + ": " + place_ + '/' + key + ": expected one of the keys " + list);
        }
    }

    /// Calls `read` with the value of a key, if there is one.
    template <class Read>
    void At(const char* key, Read read) const {
        if (value_.contains(key)) read(Place(value_.at(key), file_, place_ + '/' + key));
    }

    void ReadNumber(const char* key, double& target) const {
        At(key, [&](const Place& number) { target = number.Number(); });
    }

  private:
    [[noreturn]] void Fail(const std::string& expected) const {
        const std::string found = value_.dump(-1, ' ', false, json::error_handler_t::replace);
        throw BadInput(file_ + ": " + (place_.empty() ? "" : place_ + ": ") + "expected " + expected +
                       ", found " + Quoted(value_.is_string() ? value_.get<std::string>() : found));
    }

    const json& value_;
    std::string file_, place_;
};

void ReadShelf(const Place& object, Shelf& shelf) {
    object.ExpectObject({"F", "G", "P3", "P4"});
    object.ReadNumber("F", shelf.F);
    object.ReadNumber("G", shelf.G);
    object.ReadNumber("P3", shelf.P3);
    object.ReadNumber("P4", shelf.P4);
}

}  // namespace

Waveform ParseWaveform(std::istream& input, const std::string& fileName) {
    Waveform wave;
    TextLines lines(input, fileName);
    while (lines.Next()) {
        const std::string_view text = Trimmed(lines.Line());
        if (text.empty()) continue;
        const std::optional<double> number = ParseNumber(text);
        const auto column = static_cast<int>(lines.Line().find_first_not_of(kBlanks)) + 1;
        if (!number) throw BadInput(lines.At(column), "a number, found " + Quoted(text));
        wave.push_back(*number);
    }
    if (wave.empty()) throw BadInput(lines.At(1), "a number, found the end");
    return wave;
}

VoiceSettings ParseVoice(const std::string& text, const std::string& fileName) {
    const json file = ParseJson(text, fileName);
    const Place voice(file, fileName, "");
    voice.ExpectObject({"pre_emphasis", "open_quotient", "low_shelf", "high_shelf", "wave"});
    VoiceSettings settings;
    voice.ReadNumber("pre_emphasis", settings.preEmphasis);
    voice.ReadNumber("open_quotient", settings.openQuotient);
    voice.At("low_shelf", [&](const Place& shelf) { ReadShelf(shelf, settings.lowShelf); });
    voice.At("high_shelf", [&](const Place& shelf) { ReadShelf(shelf, settings.highShelf); });
    voice.At("wave", [&](const Place& wave) { settings.wave = wave.Numbers(); });
    return settings;
}

}  // namespace larynth
