// SPDX-License-Identifier: MIT
#include "runtime/LoadedModules.h"

#include <algorithm>
#include <dlfcn.h>
#include <iterator>
#include <utility>

#include <larynth/Runtime.h>

#include "runtime/LastError.h"
#include "runtime/ProcessImages.h"
#include "runtime/ProcessWide.h"

namespace larynth {

namespace {

constinit ProcessWide<LoadedModules> modulesOfProcess;

const char* LoaderMessage() {
    const char* message = dlerror();
    return message != nullptr ? message : "the loader gives no reason";
}

}  // namespace

LoadedModules& ModulesOfProcess() noexcept { return modulesOfProcess.value; }

/// One walk over the modules. They stay in memory for as long as it takes.
class LoadedModules::LookUp {
  public:
    explicit LookUp(LoadedModules& modules) : modules_(modules) {
        const std::scoped_lock lock(modules_.mutex_);
        ++modules_.lookUps_;
        ++modules_.lookUpsGoingOn_;
        list_ = modules_.list_;
    }
    ~LookUp() {
        list_.reset();  // may close the last handle of a module, so before the lock
        const std::scoped_lock lock(modules_.mutex_);
        --modules_.lookUpsGoingOn_;
    }
    LookUp(const LookUp&) = delete;
    LookUp& operator=(const LookUp&) = delete;

    const List& Modules() const { return *list_; }

  private:
    LoadedModules& modules_;
    std::shared_ptr<const List> list_;
};

HRESULT LoadedModules::GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    if (!IsUpToDate()) Update();
    const LookUp lookUp(*this);
    for (const LoadedModule& module : lookUp.Modules()) {
        const HRESULT hr = module.GetClassObject(rclsid, riid, ppv);
        if (hr != CLASS_E_CLASSNOTAVAILABLE) return hr;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT LoadedModules::Load(const char* path) {
    const LoadedModule module = LoadedModule::Load(path);
    if (!module.InMemory()) return Fail(CO_E_DLLNOTFOUND, "%s", LoaderMessage());
    if (!module.OffersClasses()) return Fail(CO_E_ERRORINDLL, "%s: exports no DllGetClassObject", path);
    if (!module.TellsWhenUnused()) return Fail(CO_E_ERRORINDLL, "%s: exports no DllCanUnloadNow", path);
    if (!IsUpToDate()) Update();
    return S_OK;
}

bool LoadedModules::IsUpToDate() {
    const std::uint64_t changes = CountImageChanges();
    const std::scoped_lock lock(mutex_);
    return !forgetful_ && changes == imageChanges_;
}

void LoadedModules::Update() {
    auto found = std::make_shared<List>();
    const ProcessImages images = ListProcessImages();
    for (const std::string& path : images.paths) {
        LoadedModule module = LoadedModule::Find(path.c_str());
        if (module.OffersClasses()) found->push_back(std::move(module));
    }
    std::shared_ptr<const List> replaced = std::move(found);
    const std::scoped_lock lock(mutex_);
    // A walk that another thread began later knows more: it must not be undone.
    if (images.changes < imageChanges_) return;
    list_.swap(replaced);
    imageChanges_ = images.changes;
    forgetful_ = false;
}

void LoadedModules::FreeUnused() {
    // The lists come before the locks: dropping one may close modules.
    std::shared_ptr<const List> asked;
    auto inUse = std::make_shared<List>();
    std::uint64_t lookUps = 0;
    {
        const std::scoped_lock lock(mutex_);
        if (list_ == nullptr || lookUpsGoingOn_ != 0) return;
        asked = list_;
        lookUps = lookUps_;
    }
    std::ranges::copy_if(*asked, std::back_inserter(*inUse),
                         [](const LoadedModule& module) { return !module.CanUnload(); });
    const std::scoped_lock lock(mutex_);
    // An answer holds only as long as nobody could have asked the module for a class object since.
    if (lookUps_ != lookUps || list_ != asked || inUse->size() == asked->size()) return;
    list_ = std::move(inUse);
    forgetful_ = true;
}

}  // namespace larynth

HRESULT LARYNTH_CALL LarynthLoadModule(LPCSTR sPath) {
    if (sPath == nullptr) return larynth::Fail(E_POINTER, "no path");
    return larynth::Contained([&] { return larynth::ModulesOfProcess().Load(sPath); });
}

void LARYNTH_CALL CoFreeUnusedLibraries() {
    larynth::Contained([] {
        larynth::ModulesOfProcess().FreeUnused();
        return S_OK;
    });
}
