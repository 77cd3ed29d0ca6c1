// SPDX-License-Identifier: MIT
#include "runtime/ClassObjects.h"

#include <algorithm>
#include <utility>

#include <larynth/ComPtr.h>
#include <larynth/Runtime.h>

#include "runtime/LastError.h"
#include "runtime/ProcessWide.h"

namespace larynth {

namespace {
constinit ProcessWide<ClassObjects> classObjectsOfProcess;
}  // namespace

struct ClassObjects::Entry {
    CLSID classId;
    DWORD number = 0;
    ComPtr<IUnknown> object;

    Entry(REFCLSID id, ComPtr<IUnknown> offered) : classId(id), object(std::move(offered)) {}
};

ClassObjects& ClassObjectsOfProcess() noexcept { return classObjectsOfProcess.value; }

HRESULT ClassObjects::Get(REFCLSID rclsid, REFIID riid, void** ppv) {
    const EntryPtr entry = Find(rclsid);
    return entry != nullptr ? entry->object->QueryInterface(riid, ppv) : CLASS_E_CLASSNOTAVAILABLE;
}

ClassObjects::EntryPtr ClassObjects::Find(REFCLSID rclsid) {
    const std::scoped_lock lock(mutex_);
    const auto found = std::find_if(entries_.rbegin(), entries_.rend(),
                                    [&](const EntryPtr& entry) { return entry->classId == rclsid; });
    return found != entries_.rend() ? *found : nullptr;
}

DWORD ClassObjects::Add(REFCLSID rclsid, IUnknown* object) {
    object->AddRef();
    const auto entry = std::make_shared<Entry>(rclsid, ComPtr<IUnknown>::Adopt(object));
    const std::scoped_lock lock(mutex_);
    entries_.push_back(entry);
    count_.fetch_add(1);
    if (++lastNumber_ == 0) ++lastNumber_;
    return entry->number = lastNumber_;
}

bool ClassObjects::Remove(DWORD number) {
    EntryPtr removed;  // goes after the lock
    const std::scoped_lock lock(mutex_);
    const auto found =
        std::ranges::find_if(entries_, [&](const EntryPtr& entry) { return entry->number == number; });
    if (found == entries_.end()) return false;
    removed = std::move(*found);
    entries_.erase(found);
    count_.fetch_sub(1);
    return true;
}

}  // namespace larynth

HRESULT LARYNTH_CALL CoRegisterClassObject(REFCLSID rclsid, IUnknown* pUnk, DWORD dwClsContext, DWORD flags,
                                           DWORD* lpdwRegister) {
    if (pUnk == nullptr || lpdwRegister == nullptr) return larynth::Fail(E_POINTER, "null pointer");
    if (dwClsContext != CLSCTX_INPROC_SERVER || flags != REGCLS_MULTIPLEUSE) {
        return larynth::Fail(E_INVALIDARG, "only CLSCTX_INPROC_SERVER with REGCLS_MULTIPLEUSE is possible");
    }
    return larynth::Contained([&] {
        *lpdwRegister = larynth::ClassObjectsOfProcess().Add(rclsid, pUnk);
        return S_OK;
    });
}

std::uint32_t LARYNTH_CALL LarynthClassObjectCount() { return larynth::ClassObjectsOfProcess().Count(); }

HRESULT LARYNTH_CALL CoRevokeClassObject(DWORD dwRegister) {
    return larynth::Contained([&] {
        if (larynth::ClassObjectsOfProcess().Remove(dwRegister)) return S_OK;
        return larynth::Fail(CO_E_OBJNOTREG, "no class object is registered under the number %u", dwRegister);
    });
}
