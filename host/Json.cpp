// SPDX-License-Identifier: MIT
#include "host/Json.h"

#include <algorithm>
#include <set>

#include "host/TableError.h"
#include "host/TextFields.h"
#include "host/Utf8.h"

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

}  // namespace

JsonValue JsonValue::Parse(const std::string& text, const std::string& fileName) {
    try {
        RepeatedKeys repeated(fileName);
        return {json::parse(text, std::ref(repeated)), fileName, ""};
    } catch (const json::parse_error& error) {
        const std::size_t byte = error.byte > 0 ? error.byte - 1 : 0;
        throw TableError(PositionOf(byte, text, fileName), "JSON");
    } catch (const json::out_of_range&) {
        throw BadInput(fileName + ": expected numbers that fit a double");
    }
}

double JsonValue::Number() const {
    if (!value_.is_number()) Fail("a number");
    return value_.get<double>();
}

std::vector<double> JsonValue::Numbers() const {
    if (!value_.is_array()) Fail("an array of numbers");
    std::vector<double> numbers;
    for (const json& element : value_) {
        if (!element.is_number()) {
            JsonValue(element, file_, place_ + '/' + std::to_string(numbers.size())).Fail("a number");
        }
        numbers.push_back(element.get<double>());
    }
    return numbers;
}

std::string JsonValue::Text() const {
    if (!value_.is_string()) Fail("a text");
    return value_.get<std::string>();
}

void JsonValue::ExpectObject(std::initializer_list<std::string_view> keys) const {
    std::string list;
    for (const std::string_view key : keys) list += (list.empty() ? "" : ", ") + std::string(key);
    for (const std::string& key : Keys()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
            throw BadInput(file_ + ": " + place_ + '/' + key + ": expected one of the keys " + list);
        }
    }
}

std::vector<std::string> JsonValue::Keys() const {
    if (!value_.is_object()) Fail("an object");
    std::vector<std::string> keys;
    for (const auto& [key, value] : value_.items()) keys.push_back(key);
    return keys;
}

JsonValue JsonValue::operator[](const std::string& key) const {
    if (!Has(key)) Fail("an object with the key " + key);
    return {value_.at(key), file_, place_ + '/' + key};
}

void JsonValue::Fail(const std::string& expected) const {
    const std::string found = value_.dump(-1, ' ', false, json::error_handler_t::replace);
    throw BadInput(file_ + ": " + (place_.empty() ? "" : place_ + ": ") + "expected " + expected +
                   ", found " + (value_.is_string() ? Quoted(value_.get<std::string>()) : Quoted(found)));
}

}  // namespace larynth
