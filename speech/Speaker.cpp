// SPDX-License-Identifier: MIT
#include "speech/Speaker.h"

#include <algorithm>
#include <array>
#include <set>
#include <sstream>
#include <utility>

#include "input/FieldLines.h"
#include "speech/Data.h"

namespace larynth {
namespace {

struct Value {
    std::string_view name;
    double least, most;
    void (*put)(Speaker&, double);
};

constexpr std::array kValues{
    Value{"f0", 40, 500, [](Speaker& s, double v) { s.f0 = v; }},
    Value{"spread", 0, 2, [](Speaker& s, double v) { s.spread = v; }},
    Value{"scale1", 0.5, 2, [](Speaker& s, double v) { s.scale[0] = v; }},
    Value{"scale2", 0.5, 2, [](Speaker& s, double v) { s.scale[1] = v; }},
    Value{"scale3", 0.5, 2, [](Speaker& s, double v) { s.scale[2] = v; }},
    Value{"F4", 2500, 6000, [](Speaker& s, double v) { s.upper[0] = v; }},
    Value{"F5", 2500, 7500, [](Speaker& s, double v) { s.upper[1] = v; }},
    Value{"B4", 20, 2000, [](Speaker& s, double v) { s.upperBandwidth[0] = v; }},
    Value{"B5", 20, 2000, [](Speaker& s, double v) { s.upperBandwidth[1] = v; }},
    Value{"open_quotient", 0.1, 0.95, [](Speaker& s, double v) { s.openQuotient = v; }},
    Value{"tilt", 0, 41, [](Speaker& s, double v) { s.tilt = v; }},
    Value{"breathiness", -90, 20, [](Speaker& s, double v) { s.breathiness = v; }},
    Value{"flutter", 0, 1, [](Speaker& s, double v) { s.flutter = v; }},
    Value{"whispers", 0, 1, [](Speaker& s, double v) { s.whispers = v != 0.0; }},
};

constexpr std::string_view kExtension = ".speaker";

}  // namespace

Speaker Speaker::Parse(std::istream& input, std::string fileName) {
    FieldLines lines(input, std::move(fileName), FieldLines::Separator::Blanks);
    Speaker speaker;
    std::set<std::string, std::less<>> seen;
    while (lines.Next()) {
        const std::string_view name = lines.Fields().front();
        const auto value =
            std::find_if(kValues.begin(), kValues.end(), [&](const Value& row) { return row.name == name; });
        if (value == kValues.end()) lines.Fail(name, "the name of a speaker's value");
        if (lines.Fields().size() != 2)
            throw BadInput(lines.Beginning(), std::string(name) + " and one value");
        if (!seen.emplace(name).second) lines.Fail(name, "each value once");
        value->put(speaker, lines.Number(lines.Fields()[1], value->least, value->most, "a number"));
    }
    return speaker;
}

std::optional<Speaker> Speaker::Find(std::string_view name) {
    const std::string fileName = std::string(name).append(kExtension);
    for (const CompiledFile& file : DataFiles()) {
        if (file.name != fileName) continue;
        std::istringstream text{std::string(file.text)};
        return Parse(text, fileName);
    }
    return std::nullopt;
}

std::vector<std::string> Speaker::Names() {
    std::vector<std::string> names;
    for (const CompiledFile& file : DataFiles()) {
        if (file.name.ends_with(kExtension)) {
            names.emplace_back(file.name.substr(0, file.name.size() - kExtension.size()));
        }
    }
    return names;
}

}  // namespace larynth
