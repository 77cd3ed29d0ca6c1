// SPDX-License-Identifier: MIT
#include "host/command/RenderFolder.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <system_error>

#include "host/command/ExitStatus.h"
#include "host/command/Terminal.h"
#include "input/BadInput.h"
#include "input/Text.h"

#ifdef _WIN32
#include <larynth/Runtime.h>
#else
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace larynth {
namespace {

namespace fs = std::filesystem;

std::string PathIn(const std::string& folder, const std::string& input, const std::string& extension) {
    return (fs::path(folder) / fs::path(input).stem().concat(extension)).string();
}

std::vector<RenderJob> JobsOf(const RenderFolder& folder, const std::vector<std::string>& inputs) {
    std::vector<RenderJob> jobs;
    for (const std::string& input : inputs) {
        if (input == "-") throw BadInput("expected files for an output folder, found - (standard input)");
        jobs.push_back({input, PathIn(folder.output, input, folder.extension)});
        if (!folder.labels.empty()) jobs.back().labels = PathIn(folder.labels, input, ".txt");
    }
    return jobs;
}

/// Every file has one use: nothing is read that another job writes, nothing is written twice.
void RequireOwnFiles(const std::vector<RenderJob>& jobs) {
    const auto key = [](const std::string& path) { return fs::weakly_canonical(path).string(); };
    std::map<std::string, std::string> inputs, makers;
    for (const RenderJob& job : jobs) inputs.emplace(key(job.input), job.input);
    for (const RenderJob& job : jobs) {
        for (const std::string& made : {job.output, job.labels}) {
            if (made.empty()) continue;
            if (inputs.contains(key(made))) throw BadInput(made + ": expected another file than an input");
            const auto [maker, isNew] = makers.emplace(key(made), job.input);
            if (!isNew) throw BadInput(maker->second + " and " + job.input + " would both become " + made);
        }
    }
}

void MakeFolder(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error) throw std::system_error(error, path + ": cannot be made");
}

bool IsMade(const RenderJob& job) {
    std::error_code noOutput, noInput;
    const auto made = fs::last_write_time(job.output, noOutput);
    const auto written = fs::last_write_time(job.input, noInput);
    if (noOutput || noInput || made < written) return false;
    return job.labels.empty() || fs::exists(job.labels);
}

/// Runs jobs side by side and counts how they ended.
class Processes {
  public:
    Processes(std::size_t most, std::size_t jobs) : most_(most), bar_(ProgressBar::IsWanted() ? jobs : 0) {}

    void Skip() { bar_.Show(++done_); }
    void Start(const std::function<void()>& work);
    void WaitForAll() {
        while (running_ != 0) WaitForOne();
    }
    std::size_t Count(ExitStatus status) const { return counts_[status]; }

  private:
    void WaitForOne();

    std::size_t most_;
    ProgressBar bar_;
    std::size_t running_ = 0, done_ = 0;
    std::size_t counts_[kBadInput + 1] = {};
};

#ifdef _WIN32

// A process has no copies here: one job after the other, each with the noise that a new process begins with.
void Processes::Start(const std::function<void()>& work) {
    LarynthSeedNoise(1);
    ++counts_[StatusOf(work)];
    bar_.Show(++done_);
}

void Processes::WaitForOne() {}

#else

void Processes::Start(const std::function<void()>& work) {
    if (running_ == most_) WaitForOne();
    const pid_t process = fork();
    if (process < 0) throw std::system_error(errno, std::generic_category(), "cannot start a process");
    if (process == 0) {
        const ExitStatus status = StatusOf(work);
        std::fflush(nullptr);
        _exit(status);
    }
    ++running_;
}

void Processes::WaitForOne() {
    int status = 0;
    if (wait(&status) < 0)
        throw std::system_error(errno, std::generic_category(), "cannot wait for a process");
    const bool isBadInput = WIFEXITED(status) && WEXITSTATUS(status) == kBadInput;
    ++counts_[status == 0 ? kDone : isBadInput ? kBadInput : kFailed];
    --running_;
    bar_.Show(++done_);
}

#endif

std::string Counted(std::size_t count, const char* what) { return std::to_string(count) + what; }

}  // namespace

void RenderIntoFolder(const RenderFolder& folder, const std::vector<std::string>& inputs,
                      const std::function<void(const RenderJob&)>& render) {
    const auto start = std::chrono::steady_clock::now();
    const std::vector<RenderJob> jobs = JobsOf(folder, inputs);
    RequireOwnFiles(jobs);
    MakeFolder(folder.output);
    if (!folder.labels.empty()) MakeFolder(folder.labels);
    std::size_t skipped = 0, failed = 0, bad = 0, made = 0;
    {
        Processes processes(folder.processes, jobs.size());
        for (const RenderJob& job : jobs) {
            if (!folder.force && IsMade(job)) {
                ++skipped, processes.Skip();
            } else {
                processes.Start([&] { render(job); });
            }
        }
        processes.WaitForAll();
        made = processes.Count(kDone), failed = processes.Count(kFailed), bad = processes.Count(kBadInput);
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    const std::string summary = folder.output + ": " + Counted(made, " made, ") +
                                Counted(skipped, " skipped, ") + Counted(failed + bad, " failed, in ") +
                                FixedText(taken.count(), 2) + " s";
    if (failed != 0) throw std::runtime_error(summary);
    if (bad != 0) throw BadInput(summary);
    Say(summary);
}

}  // namespace larynth
