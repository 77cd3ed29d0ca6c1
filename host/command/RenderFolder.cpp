// SPDX-License-Identifier: MIT
#include "host/command/RenderFolder.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "host/command/Processes.h"
#include "host/command/Terminal.h"
#include "input/BadInput.h"
#include "input/Text.h"

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
        if (folder.labels == "-") throw BadInput("--labels: expected a folder, found -");
        if (!folder.labels.empty()) jobs.back().labels = PathIn(folder.labels, input, ".txt");
    }
    return jobs;
}

/// Every file has one use: nothing is read that another job writes, nothing is written twice.
void RequireOwnFiles(const std::vector<RenderJob>& jobs) {
    const auto key = [](const std::string& path) {
        std::error_code unknown;
        const fs::path resolved = fs::weakly_canonical(path, unknown);
        return unknown ? fs::absolute(path).string() : resolved.string();
    };
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

/// The youngest of the files from which a sound is made; nothing where one is missing.
std::optional<fs::file_time_type> AgeOf(const std::vector<std::string>& files) {
    auto youngest = fs::file_time_type::min();
    for (const std::string& file : files) {
        std::error_code error;
        youngest = std::max(youngest, fs::last_write_time(file, error));
        if (error) return std::nullopt;
    }
    return youngest;
}

bool IsMade(const RenderJob& job, const RenderFolder& folder) {
    std::vector<std::string> sources = folder.settings;
    sources.push_back(job.input);
    const auto age = AgeOf(sources);
    const auto isFresh = [&](const std::string& path) {
        std::error_code error;
        return fs::is_regular_file(path, error) && age && fs::last_write_time(path, error) >= *age && !error;
    };
    return isFresh(job.output) && (job.labels.empty() || isFresh(job.labels));
}

void RequireFile(const std::string& input) {
    std::error_code error;  // what is missing is told by who opens it
    const fs::file_status status = fs::status(input, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        throw BadInput(input + ": expected a regular file");
    }
}

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
            if (!folder.force && IsMade(job, folder)) {
                ++skipped, processes.Skip();
            } else {
                processes.Start(job.input, [&] { RequireFile(job.input), render(job); });
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
