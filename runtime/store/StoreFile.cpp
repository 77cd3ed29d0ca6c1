// SPDX-License-Identifier: MIT
#include "runtime/store/StoreFile.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "runtime/Failure.h"

namespace larynth {

namespace {

using std::filesystem::path;

/// Empty for a variable that is not set or does not count.
path PathIn(const char* variable) {
    const char* const value = secure_getenv(variable);
    return value != nullptr ? value : "";
}

[[noreturn]] void Refuse(const path& file, const char* reason, HRESULT code) {
    throw Failure(code, file.string() + ": " + reason);
}

/// A folder counts as a file that others may write where they can put files into it, also where its sticky
/// bit keeps them from taking files away: a journal beside the store would be played back into it.
void CheckOwner(const path& file, HRESULT code) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) Refuse(file, std::strerror(errno), code);
    if (status.st_uid != geteuid() && status.st_uid != 0) {
        Refuse(file, "belongs to another user, so the registration store is not used", code);
    }
    if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
        Refuse(file,
               "others than its owner may write there, so the registration store is not used; "
               "chmod go-w takes that away",
               code);
    }
}

void CreateFolders(const path& folder, mode_t mode) {
    std::error_code unclear;
    if (std::filesystem::is_directory(folder, unclear)) return;
    CreateFolders(folder.parent_path(), mode);
    if (mkdir(folder.c_str(), mode) == 0) return;
    const char* const reason = std::strerror(errno);
    // Another process may have been faster.
    if (!std::filesystem::is_directory(folder, unclear)) Refuse(folder, reason, REGDB_E_WRITEREGDB);
}

}  // namespace

std::string UsersStoreFile() {
    if (const path file = PathIn("LARYNTH_REGISTRY"); !file.empty()) return file;
    // A relative data folder does not count: it would be another one in each working folder.
    if (const path data = PathIn("XDG_DATA_HOME"); data.is_absolute()) return data / "larynth/registry.db";
    if (const path home = PathIn("HOME"); !home.empty()) return home / ".local/share/larynth/registry.db";
    return {};
}

std::string SystemStoreFile() {
    return PathIn("LARYNTH_REGISTRY").empty() ? LARYNTH_SYSTEM_STORE : std::string();
}

std::string ExistingStoreFile(const std::string& store, HRESULT code) {
    if (store.empty()) return {};
    if (path(store).is_relative()) Refuse(store, "the registration store needs an absolute path", code);
    std::error_code error;
    const path file = std::filesystem::canonical(store, error);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory) return {};
    if (error) Refuse(store, error.message().c_str(), code);
    if (!std::filesystem::is_regular_file(file, error)) {
        Refuse(file, "is no regular file, so no registration store", code);
    }
    CheckOwner(file.parent_path(), code);
    CheckOwner(file, code);
    return file;
}

void CreateStoreFile(const std::string& store) {
    if (store.empty()) {
        throw Failure(REGDB_E_WRITEREGDB,
                      "no place for the registration store: LARYNTH_REGISTRY, XDG_DATA_HOME and HOME are not "
                      "set, or do not count because the process runs with more rights than its caller");
    }
    const path folder = path(store).parent_path();
    const bool isSystems = store == LARYNTH_SYSTEM_STORE;
    CreateFolders(folder, isSystems ? 0755 : 0700);
    CheckOwner(folder, REGDB_E_WRITEREGDB);
    const int file = open(store.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, isSystems ? 0644 : 0600);
    if (file < 0) Refuse(store, std::strerror(errno), REGDB_E_WRITEREGDB);
    close(file);
}

}  // namespace larynth
