// SPDX-License-Identifier: MIT
#include "host/OutputFile.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

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
    static_cast<void>(fchmod(descriptor_, replaces ? (mode & 0777u) : (0666u & ~CurrentUmask())) == 0);
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

}  // namespace larynth
