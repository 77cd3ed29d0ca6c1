// SPDX-License-Identifier: MIT
/// The output module of Speech Dispatcher: the server starts it with the name of its configuration file.
#include <csignal>
#include <iostream>
#include <unistd.h>

#include "speechd/OutputModule.h"

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);  // a server that went away is seen where it no longer sends
    larynth::speechd::CommandInput input(std::cin);
    larynth::speechd::EventOutput output(STDOUT_FILENO);
    larynth::speechd::OutputModule module(input, output, argc > 1 ? argv[1] : "");
    return module.Run() ? 0 : 1;
}
