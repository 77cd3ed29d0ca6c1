// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "host/Descriptors.h"
#include "host/Files.h"

namespace larynth {
namespace {

namespace fs = std::filesystem;

constexpr std::array kEndingSignals{SIGHUP, SIGINT, SIGQUIT, SIGTERM};

sigset_t EndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kEndingSignals) sigaddset(&signals, signal);
    return signals;
}

mode_t CurrentUmask() {
    const mode_t mask = umask(0);
    umask(mask);
    return mask;
}

/// Where a name leads through symbolic links, of which the last may lead to nothing.
fs::path Resolved(const std::string& name) {
    constexpr int kMostLinks = 40;  // as the kernel follows
    std::error_code ignored;
    fs::path path = fs::absolute(name, ignored);
    for (int i = 0; i < kMostLinks && fs::is_symlink(path, ignored); ++i) {
        path = path.parent_path() / fs::read_symlink(path, ignored);
    }
    const fs::path canonical = fs::weakly_canonical(path, ignored);
    return canonical.empty() ? path : canonical;
}

std::string DescriptorPath(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

/// A file without a name that can get one in the folder, or -1 where the system has no such files.
int OpenUnnamed(const fs::path& folder) {
    constexpr int kOwnerAlone = 0600;
    const int descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | kFileFlags, kOwnerAlone);
    if (descriptor >= 0 && access(DescriptorPath(descriptor).c_str(), F_OK) != 0) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

}  // namespace

int OpenScratch() {
    std::error_code error;
    fs::path folder = fs::temp_directory_path(error);
    if (error) folder = "/tmp";
    const int unnamed = OpenUnnamed(folder);
    if (unnamed >= 0) return unnamed;
    std::string pattern = folder / "larynth-XXXXXX";
    const int descriptor = mkostemp(pattern.data(), kFileFlags);
    if (descriptor >= 0) unlink(pattern.c_str());
    return descriptor;
}

bool IsSameFile(const std::string& one, const std::string& other) {
    struct stat first {
    }, second{};
    if (stat(one.c_str(), &first) != 0 || stat(other.c_str(), &second) != 0) {
        return Resolved(one) == Resolved(other);
    }
    return S_ISREG(first.st_mode) && first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

/// Holds back, as long as it exists, the signals that would end the program.
class HeldSignals {
  public:
    HeldSignals();
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals();

    static bool IsOneWaiting();

  private:
    sigset_t before_;
};

HeldSignals::HeldSignals() {
    const sigset_t held = EndingSignals();
    pthread_sigmask(SIG_BLOCK, &held, &before_);
}

HeldSignals::~HeldSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

bool HeldSignals::IsOneWaiting() {
    sigset_t waiting;
    if (sigpending(&waiting) != 0) return false;
    return std::ranges::any_of(kEndingSignals,
                               [&](int signal) { return sigismember(&waiting, signal) == 1; });
}

OutputFile::OutputFile(const std::string& path, Access access) : name_(path) {
    buffer_.reserve(kBufferSize);
    struct stat status {};
    const bool exists = path != "-" && stat(path.c_str(), &status) == 0;
    if (path != "-" && !exists && errno != ENOENT) Fail("cannot be created");
    if (exists && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        Fail("cannot be written");
    }
    if (path != "-" && (!exists || S_ISREG(status.st_mode))) {
        if (exists && ::access(path.c_str(), W_OK) != 0) Fail("cannot be written");
        OpenBesides();
        TakeMode(exists, status.st_mode);
        return;
    }
    descriptor_ = path == "-" ? STDOUT_FILENO : open(path.c_str(), O_WRONLY | kFileFlags);
    if (descriptor_ >= 0 && access == Access::Seeking) {
        device_ = descriptor_;
        descriptor_ = OpenScratch();
        if (descriptor_ < 0) close(std::exchange(device_, -1));
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
    descriptor_ = OpenUnnamed(target.parent_path());
    if (descriptor_ >= 0) return;
    std::string pattern = (target.parent_path() / ".larynth-XXXXXX").string();
    heldSignals_ = std::make_unique<HeldSignals>();
    descriptor_ = mkostemp(pattern.data(), kFileFlags);
    if (descriptor_ < 0) Fail("cannot be created");
    temporary_ = std::move(pattern);
}

void OutputFile::TakeMode(bool replaces, unsigned mode) {
    // A failure is no reason to refuse: some file systems know no modes.
    static_cast<void>(fchmod(descriptor_, replaces ? (mode & 0777U) : (0666U & ~CurrentUmask())) == 0);
}

void OutputFile::Flush() {
    if (heldSignals_ && HeldSignals::IsOneWaiting()) {
        errno = EINTR;  // the signal ends the program as soon as the file is removed
        Fail("cannot be written");
    }
    if (!WriteAll(descriptor_, buffer_)) Fail("cannot be written");
    buffer_.clear();
}

void OutputFile::Finish() {
    Flush();
    if (device_ >= 0) CopyToDevice();
    if (!target_.empty()) {
        if (fsync(descriptor_) != 0) Fail("cannot be written");
    } else if (descriptor_ > STDERR_FILENO) {
        const int closing = std::exchange(descriptor_, -1);
        if (close(closing) != 0) Fail("cannot be written");
    }
}

void OutputFile::Commit(const std::vector<OutputFile*>& files) {
    for (OutputFile* file : files) file->Finish();
    const HeldSignals whileNamesChange;
    try {
        for (OutputFile* file : files) file->TakePlace(file != files.back());
    } catch (...) {
        for (OutputFile* file : files) file->LeavePlace();
        throw;
    }
    for (OutputFile* file : files) file->RemoveTemporary();
}

void OutputFile::TakePlace(bool mayHaveToLeave) {
    if (target_.empty()) return;
    struct stat status {};
    if (lstat(target_.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = EISDIR;  // a folder would be exchanged, too
        Fail("cannot be written");
    }
    if (temporary_.empty()) {
        const std::string unnamed = DescriptorPath(descriptor_);
        tookPlace_ = linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, target_.c_str(), AT_SYMLINK_FOLLOW) == 0;
        if (tookPlace_) return;
        if (errno != EEXIST) Fail("cannot be created");
        LinkBesides(unnamed);
    }
    errno = 0;
    tookPlace_ = mayHaveToLeave &&
                 renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, target_.c_str(), RENAME_EXCHANGE) == 0;
    if (tookPlace_) return;              // and the old file has the hidden name
    const bool isNew = errno == ENOENT;  // else the file system cannot exchange
    if (rename(temporary_.c_str(), target_.c_str()) != 0) Fail("cannot be created");
    temporary_.clear();
    tookPlace_ = isNew;
}

void OutputFile::LinkBesides(const std::string& unnamed) {
    const std::string beginning =
        (fs::path(target_).parent_path() / ".larynth-").string() + std::to_string(getpid()) + '-';
    constexpr int kMostTries = 1000;  // of names that others may have left
    for (int i = 0; i < kMostTries; ++i) {
        const std::string name = beginning + std::to_string(i);
        if (linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            temporary_ = name;
            return;
        }
        if (errno != EEXIST) break;
    }
    Fail("cannot be created");
}

void OutputFile::LeavePlace() noexcept {
    if (!tookPlace_) return;
    if (temporary_.empty()) {
        unlink(target_.c_str());
    } else {
        renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, target_.c_str(), RENAME_EXCHANGE);
    }
}

}  // namespace larynth
