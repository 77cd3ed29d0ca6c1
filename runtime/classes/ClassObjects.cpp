// SPDX-License-Identifier: MIT
#include "runtime/classes/ClassObjects.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include <larynth/ComPtr.h>

namespace larynth {

std::string ClassText(REFCLSID id) {
    char text[39];
    const auto& last = id.Data4;
    std::snprintf(text, sizeof(text), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", id.Data1,
                  id.Data2, id.Data3, last[0], last[1], last[2], last[3], last[4], last[5], last[6], last[7]);
    return text;
}

struct ClassObjects::Entry {
    CLSID classId;
    DWORD number = 0;
    ComPtr<IUnknown> object;

    Entry(REFCLSID id, ComPtr<IUnknown> offered) : classId(id), object(std::move(offered)) {}
};

HRESULT ClassObjects::Get(REFCLSID rclsid, REFIID riid, void** ppv) {
    if (empty_) return CLASS_E_CLASSNOTAVAILABLE;
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
    empty_ = false;
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
    empty_ = entries_.empty();
    return true;
}

}  // namespace larynth
