// SPDX-License-Identifier: MIT
// Any file is a store that is read and written, or refused and left as it is.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

#include "runtime/Failure.h"
#include "runtime/store/RegistrationStore.h"
#include "tests/support/Content.h"

namespace {

/// A folder of this process; in memory, so that no disk is waited for.
struct Folder {
    std::string path = "/dev/shm/larynth-" + std::to_string(getpid());
    Folder() {
        umask(077);  // a store that others could write is not looked into
        std::filesystem::create_directory(path);
    }
    ~Folder() { std::filesystem::remove_all(path); }
};

/// False when the store refuses.
template <class Deed>
bool Done(const std::string& file, Deed deed) {
    try {
        larynth::RegistrationStore store(file);
        deed(store);
        return true;
    } catch (const larynth::Failure&) {
        return false;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr char kKey[] = "HKEY_CLASSES_ROOT\\CLSID";
    static const Folder folder;
    const std::string file = folder.path + "/registry.db";
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::ofstream(file, std::ios::binary) << bytes;
    Done(file, [&](larynth::RegistrationStore& store) {
        static_cast<void>(store.Value(kKey, ""));
        for (int i = 0; i < 3 && store.Subkey(kKey, i); ++i) store.Count(kKey);
    });
    if (ContentOf(file) != bytes) std::abort();
    const bool written = Done(file, [&](larynth::RegistrationStore& store) {
        store.Begin();
        store.DeleteKey(kKey);
        store.CreateKey(kKey);
        store.SetValue(kKey, "", "new");
        store.Commit();
        if (store.Value(kKey, "") != "new") std::abort();
    });
    if (!written && ContentOf(file) != bytes) std::abort();
    std::filesystem::remove(file);
    return 0;
}
