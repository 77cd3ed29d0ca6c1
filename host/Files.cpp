// SPDX-License-Identifier: MIT
#include "host/Files.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "host/Errors.h"

namespace larynth {
namespace {

sigset_t EndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) sigaddset(&signals, signal);
    return signals;
}

mode_t CurrentUmask() {
    const mode_t mask = umask(0);
    umask(mask);
    return mask;
}

}  // namespace

InputFile::InputFile(const std::string& path) : name_(path), file_(path, std::ios::binary) {
    if (!file_) throw BadInput(path + ": cannot be opened: " + std::generic_category().message(errno));
}

InputFile InputFile::FromArgument(const std::string& path) {
    if (path == "-") return InputFile(StandardInput{});
    return InputFile(path);
}

std::istream& InputFile::Stream() { return isStandardInput_ ? std::cin : file_; }

std::string InputFile::ReadAll() {
    std::string bytes;
    std::array<char, 1 << 14> chunk;
    std::istream& stream = Stream();
    while (stream) {
        stream.read(chunk.data(), chunk.size());
        bytes.append(chunk.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad()) throw BadInput(name_ + ": cannot be read");
    return bytes;
}

OutputFile::OutputFile(const std::string& path) : name_(path) {
    if (path == "-") {
        descriptor_ = STDOUT_FILENO;
        return;
    }
    struct stat status {};
    const bool exists = stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        Fail("cannot be written");
    }
    if (exists && !S_ISREG(status.st_mode)) {
        descriptor_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor_ < 0) Fail("cannot be opened");
        return;
    }
    if (exists && access(path.c_str(), W_OK) != 0) Fail("cannot be written");
    OpenBesides();
    TakeMode(exists, status.st_mode);
}

OutputFile::~OutputFile() {
    if (descriptor_ > STDERR_FILENO) close(descriptor_);
    if (!temporary_.empty()) unlink(temporary_.c_str());
    if (holdsSignals_) pthread_sigmask(SIG_SETMASK, &signalsBefore_, nullptr);
}

void OutputFile::OpenBesides() {
    std::error_code error;
    target_ = std::filesystem::weakly_canonical(name_, error).string();
    if (error) target_ = name_;
    std::string pattern = (std::filesystem::path(target_).parent_path() / ".larynth-XXXXXX").string();
    const sigset_t held = EndingSignals();
    holdsSignals_ = pthread_sigmask(SIG_BLOCK, &held, &signalsBefore_) == 0;
    descriptor_ = mkostemp(pattern.data(), O_CLOEXEC);
    if (descriptor_ < 0) {
        const int reason = errno;
        if (holdsSignals_) pthread_sigmask(SIG_SETMASK, &signalsBefore_, nullptr);
        errno = reason;
        Fail("cannot be created");
    }
    temporary_ = std::move(pattern);
}

void OutputFile::TakeMode(bool replaces, unsigned mode) {
    // A failure is no reason to refuse: some file systems know no modes.
    static_cast<void>(fchmod(descriptor_, replaces ? (mode & 0777U) : (0666U & ~CurrentUmask())) == 0);
}

void OutputFile::Write(std::span<const char> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) Fail("cannot be written");
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

void OutputFile::Finish() {
    if (descriptor_ >= 0 && !temporary_.empty() && fsync(descriptor_) != 0) Fail("cannot be written");
    Close();
}

void OutputFile::Commit() {
    Finish();
    if (temporary_.empty()) return;
    if (rename(temporary_.c_str(), target_.c_str()) != 0) Fail("cannot be created");
    temporary_.clear();
}

void OutputFile::Close() {
    const int closing = descriptor_;
    if (closing <= STDERR_FILENO) return;
    descriptor_ = -1;
    if (close(closing) != 0) Fail("cannot be written");
}

void OutputFile::Fail(const char* what) const {
    const std::string shown = name_ == "-" ? "standard output" : name_;
    throw std::system_error(errno, std::generic_category(), shown + ": " + what);
}

void WriteToStandardOutput(const std::string& text) {
    OutputFile output("-");
    output.Write(text);
    output.Commit();
}

}  // namespace larynth
