// SPDX-License-Identifier: MIT
#include "host/command/Processes.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace larynth {

void Processes::Start(const std::string& name, const std::function<void()>& work) {
    if (running_.size() == most_) WaitForOne();
    const pid_t parent = getpid();
    pid_t process = fork();
    while (process < 0 && errno == EAGAIN && !running_.empty()) {  // no more are allowed at a time
        WaitForOne();
        process = fork();
    }
    if (process < 0) throw std::system_error(errno, std::generic_category(), "cannot start a process");
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        const ExitStatus status = getppid() == parent ? StatusOf(work) : kFailed;
        std::fflush(nullptr);
        _exit(status);
    }
    running_.emplace(process, name);
}

void Processes::WaitForOne() {
    int status = 0;
    const pid_t process = wait(&status);
    if (process < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot wait for a process");
    }
    if (WIFSIGNALED(status)) {
        Say(running_[process] + ": ended by signal " + std::to_string(WTERMSIG(status)));
    }
    const bool isBadInput = WIFEXITED(status) && WEXITSTATUS(status) == kBadInput;
    ++counts_[status == 0 ? kDone : isBadInput ? kBadInput : kFailed];
    running_.erase(process);
    bar_.Show(++done_);
}

}  // namespace larynth
