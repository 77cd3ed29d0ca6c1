// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace larynth {

/// A value of a JSON file that a user wrote, with its place: every expectation that it does not meet is
/// raised as BadInput with file, place ("/low_shelf/G") and what was expected.
class JsonValue {
  public:
    /// A whole file's text; `fileName` serves messages. Raises TableError with line and column for text that
    /// is no JSON, BadInput for a number that does not fit a double and for a key that stands twice.
    static JsonValue Parse(const std::string& text, const std::string& fileName);

    double Number() const;
    std::vector<double> Numbers() const;
    std::string Text() const;

    /// An object with no other keys than these.
    void ExpectObject(std::initializer_list<std::string_view> keys) const;
    std::vector<std::string> Keys() const;  ///< Of an object, in alphabetical order.
    bool Has(const std::string& key) const { return value_.contains(key); }
    JsonValue operator[](const std::string& key) const;

  private:
    JsonValue(nlohmann::json value, std::string file, std::string place)
        : value_(std::move(value)), file_(std::move(file)), place_(std::move(place)) {}

    [[noreturn]] void Fail(const std::string& expected) const;

    nlohmann::json value_;
    std::string file_, place_;
};

}  // namespace larynth
