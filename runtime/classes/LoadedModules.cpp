// SPDX-License-Identifier: MIT
#include "runtime/classes/LoadedModules.h"

#include <algorithm>
#include <dlfcn.h>
#include <iterator>
#include <link.h>
#include <new>
#include <string>
#include <utility>

#include "runtime/Failure.h"

namespace larynth {

namespace {

const char* LoaderMessage() {
    const char* message = dlerror();
    return message != nullptr ? message : "the loader gives no reason";
}

/// What the loader has brought into the process: the program and its shared objects.
struct Images {
    std::uint64_t changes = 0;       // CountImageChanges() at the time
    std::vector<std::string> paths;  // as the loader knows them, in load order; "" is the program
};

std::uint64_t Changes(const dl_phdr_info& info) noexcept { return info.dlpi_adds + info.dlpi_subs; }

/// Keeps the changes and stops: every image carries the same counts.
int ReadChanges(dl_phdr_info* info, std::size_t, void* changes) {
    *static_cast<std::uint64_t*>(changes) = Changes(*info);
    return 1;
}

/// How many times the loader has loaded or unloaded something; it only grows. Takes the loader's lock.
std::uint64_t CountImageChanges() noexcept {
    std::uint64_t changes = 0;
    dl_iterate_phdr(ReadChanges, &changes);
    return changes;
}

/// Stops when memory is out: no exception may cross the loader's frames.
int AddImage(dl_phdr_info* info, std::size_t, void* images) {
    auto& list = *static_cast<Images*>(images);
    try {
        list.changes = Changes(*info);
        list.paths.emplace_back(info->dlpi_name);
        return 0;
    } catch (const std::bad_alloc&) {
        return 1;
    }
}

}  // namespace

/// One walk over a list. As long as it takes, no list that it may have seen is dropped.
class LoadedModules::LookUp {
  public:
    explicit LookUp(UseCount& count) noexcept : count_(count) {
        // In one order with the changes of current_: who drops a list sees this, or this sees the change.
        count_.Begin(std::memory_order_seq_cst);
    }
    ~LookUp() { count_.End(); }
    LookUp(const LookUp&) = delete;
    LookUp& operator=(const LookUp&) = delete;

  private:
    UseCount& count_;
};

HRESULT LoadedModules::Ask(const List& list, REFCLSID rclsid, REFIID riid, void** ppv) {
    for (const LoadedModule& module : list.modules) {
        const HRESULT hr = module.GetClassObject(rclsid, riid, ppv);
        if (hr != CLASS_E_CLASSNOTAVAILABLE) return hr;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT LoadedModules::GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    HRESULT hr = CLASS_E_CLASSNOTAVAILABLE;
    {
        const LookUp lookUp(lookUps_);
        const List* const known = current_.load();
        // What was loaded since comes after what is known, so an answer holds without a look at the loader.
        if (known != nullptr) hr = Ask(*known, rclsid, riid, ppv);
        if (hr != CLASS_E_CLASSNOTAVAILABLE) return hr;
        const List& newest = UpToDate();
        if (&newest == known) return hr;
        hr = Ask(newest, rclsid, riid, ppv);
    }
    DropReplaced();
    return hr;
}

HRESULT LoadedModules::Load(const char* path) {
    const LoadedModule module = LoadedModule::Load(path);
    if (!module.InMemory()) return Fail(CO_E_DLLNOTFOUND, "%s", LoaderMessage());
    if (!module.OffersClasses()) return Fail(CO_E_ERRORINDLL, "%s: exports no DllGetClassObject", path);
    if (!module.TellsWhenUnused()) return Fail(CO_E_ERRORINDLL, "%s: exports no DllCanUnloadNow", path);
    {
        const LookUp lookUp(lookUps_);
        UpToDate();
    }
    DropReplaced();
    return S_OK;
}

std::unique_ptr<LoadedModules::List> LoadedModules::ListModules() {
    Images images;
    if (dl_iterate_phdr(AddImage, &images) != 0) throw std::bad_alloc();
    auto list = std::make_unique<List>();
    list->imageChanges = images.changes;
    for (const std::string& path : images.paths) {
        LoadedModule module = LoadedModule::Find(path.c_str());
        if (module.OffersClasses()) list->modules.push_back(std::move(module));
    }
    return list;
}

/// The list that describes the process as it is; valid until the caller's look-up ends.
const LoadedModules::List& LoadedModules::UpToDate() {
    const std::uint64_t changes = CountImageChanges();
    {
        const std::scoped_lock lock(mutex_);
        const List* const newest = current_.load();
        if (newest != nullptr && newest->imageChanges == changes) return *newest;
    }
    auto found = ListModules();
    const std::scoped_lock lock(mutex_);
    const List* const newest = current_.load();
    // A walk that another thread began later knows more: it must not be undone.
    if (newest != nullptr && newest->imageChanges > found->imageChanges) return *newest;
    found->replaced = std::move(newest_);
    newest_ = std::move(found);
    current_.store(newest_.get());
    return *newest_;
}

/// Drops the lists that were replaced, unless a look-up may be walking them.
void LoadedModules::DropReplaced() {
    std::unique_ptr<List> dropped;  // before the lock: dropping one may close modules
    const std::scoped_lock lock(mutex_);
    const std::uint64_t ended = lookUps_.Ended();
    if (newest_ != nullptr && lookUps_.Begun() == ended) dropped = std::move(newest_->replaced);
}

void LoadedModules::FreeUnused() {
    Modules asked;  // before the locks, as are the lists: dropping them may close modules
    auto inUse = std::make_unique<List>();
    std::uint64_t ended = 0;
    {
        const std::scoped_lock lock(mutex_);
        ended = lookUps_.Ended();
        if (newest_ == nullptr || lookUps_.Begun() != ended) return;
        asked = newest_->modules;
    }
    std::ranges::copy_if(asked, std::back_inserter(inUse->modules),
                         [](const LoadedModule& module) { return !module.CanUnload(); });
    if (inUse->modules.size() == asked.size()) return;
    const std::scoped_lock lock(mutex_);
    const List* const current = current_.exchange(nullptr);
    // An answer holds only as long as nobody could have asked the module for a class object since.
    if (lookUps_.Begun() == ended) {
        newest_.swap(inUse);
    } else {
        current_.store(current);
    }
}

}  // namespace larynth
