// SPDX-License-Identifier: MIT
#include "tests/golden/GoldenCase.h"

#include <nlohmann/json.hpp>
#include <sstream>

#include "host/Files.h"
#include "input/Text.h"

namespace larynth {

std::string GoldenFile(const std::string& name) {
    return InputFile(LARYNTH_GOLDEN_DIR "/" + name).ReadAll(1 << 20);
}

std::vector<GoldenCase> GoldenCases() {
    std::vector<GoldenCase> cases;
    const auto index = nlohmann::json::parse(GoldenFile("index.json"));
    for (const auto& row : index.at("cases")) {
        cases.push_back({row.at("name"), row.at("input"), row.at("kind"), row.at("expected"),
                         row.at("options"), row.at("samples"), row.at("markers")});
    }
    return cases;
}

std::unique_ptr<RenderInput> InputOf(const GoldenCase& row, std::istream& input) {
    if (row.kind == "packets") return std::make_unique<PacketInput>(input, row.input, std::nullopt);
    return std::make_unique<FrameInput>(FrameReader(input, row.input));
}

SynthesizerSettings SettingsOf(const GoldenCase& row) {
    SynthesizerSettings settings{.seed = 1};
    for (std::size_t i = 0; i + 1 < row.options.size(); i += 2) {
        const std::string& option = row.options[i];
        const std::string& value = row.options[i + 1];
        if (option == "--volume") settings.volume = ParseNumber(value).value();
        if (option == "--output-gain") settings.outputGain = ParseNumber(value).value();
        if (option == "--seed") settings.seed = static_cast<std::uint32_t>(std::stoul(value));
        if (option == "--tract") settings.tract = TractForm::Filter;
        if (option == "--voice") settings.voice = ParseVoice(GoldenFile(value), value);
        if (option == "--source") {
            std::istringstream file(GoldenFile(value.substr(std::string("wave:").size())));
            settings.wave = ParseWaveform(file, value);
        }
    }
    return settings;
}

}  // namespace larynth
