// SPDX-License-Identifier: MIT
#include "host/command/Options.h"

#include "host/Files.h"
#include "input/BadInput.h"

namespace larynth {
namespace {

// What "-" stands for has a name of its own.
std::string PathOf(const std::string& argument, const char* standardStream) {
    return argument == "-" ? standardStream : argument;
}

[[noreturn]] void RefuseUsed(const std::string& option, const std::string& meaning, const std::string& path) {
    throw BadInput(option + ": expected another file than " + meaning + ", found " + path);
}

}  // namespace

void Refuse(const std::string& option, const std::string& expected, const std::string& found) {
    throw CLI::ValidationError(option, "expected " + expected + ", found \"" + found + "\"");
}

std::string RefuseNoName(const std::string& file) {
    return file.empty() ? "expected the name of a file, found an empty text" : std::string();
}

AudioFormat AudioFormatOfOutput(const std::string& path) {
    const std::optional<AudioFormat> format = AudioFormatOf(path);
    if (!format) throw BadInput("--output: expected - or a name in .wav, .flac or .raw, found " + path);
    return *format;
}

void UsedFiles::AddInput(const std::string& meaning, const std::string& path) {
    taken_.emplace_back(meaning, PathOf(path, "/dev/stdin"));
}

void UsedFiles::AddOutput(const std::string& option, const std::string& meaning, const std::string& path) {
    const std::string target = PathOf(path, "/dev/stdout");
    if (path == "-") {
        if (!standardOutput_.empty()) RefuseUsed(option, standardOutput_, path);
        standardOutput_ = meaning;
    }
    for (const auto& [what, other] : taken_) {
        if (IsSameFile(target, other)) RefuseUsed(option, what, target);
    }
    taken_.emplace_back(meaning, target);
}

}  // namespace larynth
