// SPDX-License-Identifier: MIT
#include "runtime/ProcessImages.h"

#include <link.h>
#include <new>

namespace larynth {

namespace {

std::uint64_t Changes(const dl_phdr_info& info) noexcept { return info.dlpi_adds + info.dlpi_subs; }

/// Keeps the changes and stops: every image carries the same counts.
int ReadChanges(dl_phdr_info* info, std::size_t, void* changes) {
    *static_cast<std::uint64_t*>(changes) = Changes(*info);
    return 1;
}

/// Stops when memory is out: no exception may cross the loader's frames.
int AddImage(dl_phdr_info* info, std::size_t, void* images) {
    auto& list = *static_cast<ProcessImages*>(images);
    try {
        list.changes = Changes(*info);
        list.paths.emplace_back(info->dlpi_name);
        return 0;
    } catch (const std::bad_alloc&) {
        return 1;
    }
}

}  // namespace

std::uint64_t CountImageChanges() noexcept {
    std::uint64_t changes = 0;
    dl_iterate_phdr(ReadChanges, &changes);
    return changes;
}

ProcessImages ListProcessImages() {
    ProcessImages images;
    if (dl_iterate_phdr(AddImage, &images) != 0) throw std::bad_alloc();
    return images;
}

}  // namespace larynth
