// SPDX-License-Identifier: MIT
// Windows has no files without a name, and none that is open can be renamed: what is written has a hidden
// name beside its target and is closed before it takes the target's place.
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "host/Descriptors.h"
#include "host/Files.h"

namespace larynth {

/// A program that is ended from its console leaves its hidden files.
class HeldSignals {};

namespace {

namespace fs = std::filesystem;

constexpr int kToWrite = O_RDWR | kFileFlags;

/// A new file beside `target`, or in a folder that ends with a separator.
int OpenBeside(const fs::path& target, std::string& name, int flags) {
    const std::string beginning =
        (target.parent_path() / ".larynth-").string() + std::to_string(getpid()) + '-';
    constexpr int kMostTries = 1000;  // of names that others may have left
    int descriptor = -1;
    for (int i = 0; i < kMostTries && descriptor < 0 && (i == 0 || errno == EEXIST); ++i) {
        name = beginning + std::to_string(i);
        descriptor = open(name.c_str(), kToWrite | O_CREAT | O_EXCL | flags, _S_IREAD | _S_IWRITE);
    }
    return descriptor;
}

fs::path Resolved(const std::string& name) {
    std::error_code ignored;
    const fs::path path = fs::weakly_canonical(fs::absolute(name, ignored), ignored);
    return path.empty() ? fs::path(name) : path;
}

/// 0 or the error's number.
int Rename(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(from, to, error);
    return error ? error.default_error_condition().value() : 0;
}

}  // namespace

int OpenScratch() {
    std::error_code error;
    std::string unused;
    const fs::path folder = fs::temp_directory_path(error);
    return OpenBeside(folder / "", unused, O_TEMPORARY);
}

bool IsSameFile(const std::string& one, const std::string& other) {
    std::error_code first, second;
    const bool regular = fs::is_regular_file(one, first) && fs::is_regular_file(other, second);
    if (first || second) return Resolved(one) == Resolved(other);
    return regular && fs::equivalent(one, other, first);
}

OutputFile::OutputFile(const std::string& path, Access access) : name_(path) {
    buffer_.reserve(kBufferSize);
    std::error_code missing;
    const fs::file_status status = fs::status(path, missing);
    if (path != "-" && fs::is_directory(status)) {
        errno = EISDIR;
        Fail("cannot be written");
    }
    if (path != "-" && (!fs::exists(status) || fs::is_regular_file(status))) {
        if (fs::exists(status) && ::access(path.c_str(), W_OK) != 0) Fail("cannot be written");
        OpenBesides();
        return;
    }
    descriptor_ = path == "-" ? STDOUT_FILENO : open(path.c_str(), O_WRONLY | kFileFlags);
    if (descriptor_ == STDOUT_FILENO) setmode(STDOUT_FILENO, O_BINARY);
    if (descriptor_ >= 0 && access == Access::Seeking) {
        device_ = descriptor_;
        descriptor_ = OpenScratch();
        if (descriptor_ < 0 && device_ > STDERR_FILENO) close(std::exchange(device_, -1));
    }
    if (descriptor_ < 0) Fail("cannot be opened");
}

OutputFile::~OutputFile() {
    for (const int descriptor : {descriptor_, device_}) {
        if (descriptor > STDERR_FILENO) close(descriptor);
    }
    RemoveTemporary();
}

void OutputFile::OpenBesides() {
    const fs::path target = Resolved(name_);
    target_ = target.string();
    descriptor_ = OpenBeside(target, temporary_, 0);
    if (descriptor_ >= 0) return;
    temporary_.clear();
    Fail("cannot be created");
}

void OutputFile::Flush() {
    if (!WriteAll(descriptor_, buffer_)) Fail("cannot be written");
    buffer_.clear();
}

void OutputFile::Finish() {
    Flush();
    if (device_ >= 0) CopyToDevice();
    if (!target_.empty() && _commit(descriptor_) != 0) Fail("cannot be written");
    if (descriptor_ <= STDERR_FILENO) return;
    const int closing = std::exchange(descriptor_, -1);
    if (close(closing) != 0) Fail("cannot be written");
}

void OutputFile::Commit(const std::vector<OutputFile*>& files) {
    for (OutputFile* file : files) file->Finish();
    try {
        for (OutputFile* file : files) file->TakePlace(file != files.back());
    } catch (...) {
        for (OutputFile* file : files) file->LeavePlace();
        throw;
    }
    for (OutputFile* file : files) file->RemoveTemporary();
}

/// The old file, if there is one and it may have to come back, keeps a hidden name meanwhile.
void OutputFile::TakePlace(bool mayHaveToLeave) {
    if (target_.empty()) return;
    std::error_code missing;
    const bool replaces = fs::exists(target_, missing);
    const std::string old = mayHaveToLeave && replaces ? temporary_ + ".old" : std::string();
    if (!old.empty() && (errno = Rename(target_, old)) != 0) Fail("cannot be created");
    if (const int error = Rename(temporary_, target_); error != 0) {
        if (!old.empty()) Rename(old, target_);
        errno = error;
        Fail("cannot be created");
    }
    temporary_ = old;
    tookPlace_ = mayHaveToLeave;
}

void OutputFile::LeavePlace() noexcept {
    if (!tookPlace_) return;
    unlink(target_.c_str());
    if (!temporary_.empty()) Rename(temporary_, target_);
    temporary_.clear();
}

}  // namespace larynth
