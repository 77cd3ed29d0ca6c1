// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <csignal>
#include <fcntl.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include <larynth/Speech.h>

#include "host/Files.h"
#include "host/command/Completion.h"
#include "host/command/ExitStatus.h"
#include "host/command/Listings.h"
#include "host/command/PlotCommand.h"
#include "host/command/RegistrationCommand.h"
#include "host/command/RenderCommand.h"
#include "input/BadInput.h"
#if LARYNTH_SPEECH
#include "host/command/SayCommand.h"
#endif

namespace {

#ifdef _WIN32

// Line ends are what they are.
void PrepareProcess() { setmode(STDIN_FILENO, O_BINARY); }

#else

// A reader that went away and a full quota are failed writes like others, not ends of the program; and no
// file that is opened later may pass for a standard stream that was closed.
void PrepareProcess() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    for (int stream = 0; stream <= 2; ++stream) {
        if (fcntl(stream, F_GETFD) < 0) static_cast<void>(open("/dev/null", O_RDONLY));
    }
}

#endif

// For help or the version.
void Answer(const CLI::App& program, const CLI::ParseError& request) {
    std::ostringstream text;
    program.exit(request, text, text);
    larynth::WriteToStandardOutput(text.str());
}

// "render, items or classes".
std::string CommandNames(const CLI::App& program) {
    const std::vector<const CLI::App*> commands =
        program.get_subcommands([](const CLI::App*) { return true; });
    std::string names;
    for (const CLI::App* command : commands) {
        if (!names.empty()) names += command == commands.back() ? " or " : ", ";
        names += command->get_name();
    }
    return names;
}

void Run(int argc, char** argv) {
    CLI::App program("Formant speech synthesizer", "larynth");
    program.set_version_flag("--version", LARYNTH_VERSION);
    program.require_subcommand(0, 1);
    program.footer(
        "Example:\n  larynth render table.csv -o sound.wav\n\nlarynth COMMAND --help lists a command's "
        "options.");
#if LARYNTH_SPEECH
    larynth::SayCommand say(program);
#else
    const auto refuse = [] {
        throw larynth::BadInput("say: expected a program that was built with flite and expat");
    };
    program.add_subcommand("say", "Left out of this program")->allow_extras()->callback(refuse);
#endif
    larynth::RenderCommand render(program);
    larynth::AddPlotCommand(program);
    larynth::AddItemsCommand(program);
    larynth::AddRegistrationCommands(program);
#ifndef _WIN32
    larynth::AddClassesCommand(program);
#endif
    larynth::AddCompletionCommand(program);
    try {
        program.parse(argc, argv);  // and does what was asked for
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) throw;
        return Answer(program, error);
    }
    if (program.get_subcommands().empty()) {
        throw larynth::BadInput("expected " + CommandNames(program) + ", see larynth --help");
    }
}

}  // namespace

int main(int argc, char** argv) {
    PrepareProcess();
    return larynth::StatusOf([=] { Run(argc, argv); });
}
