// SPDX-License-Identifier: MIT
#include "host/command/PlotCommand.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <larynth/Speech.h>

#include "host/command/Options.h"
#include "input/BadInput.h"

namespace larynth {
namespace {

/// Takes the package from where the interpreter looks for packages, else from beside the command: its folder
/// is the first argument.
constexpr char kProgram[] = R"(import sys
sys.path.append(sys.argv[1])
try:
    from larynth.__main__ import main
except ImportError as missing:
    print(f"larynth: plot: expected the Python package (python3-larynth) for {sys.executable}: {missing}", file=sys.stderr)
    sys.exit(1)
sys.exit(main(sys.argv[2:]))
)";

std::string PackageFolder() {
    const std::filesystem::path modules = std::filesystem::path(ModulePaths().front()).parent_path();
    return (modules.parent_path() / LARYNTH_PYTHON_FROM_LIB).lexically_normal().string();
}

/// The options of the command line that are handed on as they are.
using Given = std::vector<std::pair<std::string, std::string>>;

[[noreturn]] void BecomeInterpreter(const std::string& input, const std::string& output, const Given& given) {
    std::vector<std::string> words{LARYNTH_PYTHON_PROGRAM, "-c", kProgram, PackageFolder(), "plot"};
    for (const auto& [name, value] : given) words.push_back(name + '=' + value);
    words.insert(words.end(), {"--output=" + output, "--", input});
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execvp(arguments.front(), arguments.data());
    throw std::system_error(errno, std::generic_category(), "plot: cannot start " LARYNTH_PYTHON_PROGRAM);
}

}  // namespace

void AddPlotCommand(CLI::App& program) {
    CLI::App* const command = program.add_subcommand(
        "plot", "Draw waveform, glottal pulses, spectrogram, formants and F0 of a frame table");
    const auto input = std::make_shared<std::string>(), output = std::make_shared<std::string>();
    const auto given = std::make_shared<Given>();
    command->add_option("INPUT", *input, "Frame table or targets")
        ->required()
        ->check(RefuseNoName)
        ->type_name("FILE");
    command->add_option("-o,--output", *output, "Picture, by extension .png, .svg or .pdf")
        ->required()
        ->check(RefuseNoName)
        ->type_name("FILE");
    const auto add = [=](const char* name, const char* help, const char* type) {
        const auto hand = [=](const std::string& value) { given->emplace_back(name, value); };
        command->add_option_function<std::string>(name, hand, help)->type_name(type);
    };
    add("--input", "What INPUT is (default table)", "table|targets");
    add("--frame-len", "Samples of a frame, where INPUT has no FrameLen", "N");
    add("--sample-freq", "Sample frequency, where INPUT has no SampleFreq (default 11025)", "HZ");
    add("--seed", "State of the noise generator at the start (default 1)", "N");
    add("--voice", "Voice: open quotient, output filters, a source (JSON)", "FILE");
    command->footer("Example:\n  larynth plot table.csv -o picture.png");
    command->callback([=] { BecomeInterpreter(*input, *output, *given); });
}

}  // namespace larynth
