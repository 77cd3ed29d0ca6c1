// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include <larynth/Interface.h>

namespace larynth {

/// The class objects that the process offers by itself. No lock is held while one of them is called.
class ClassObjects {
  public:
    /// The interface `riid` of the class object registered last for the class; CLASS_E_CLASSNOTAVAILABLE when
    /// there is none.
    HRESULT Get(REFCLSID rclsid, REFIID riid, void** ppv);

    /// Takes a reference and gives a number, never 0. Raises std::bad_alloc.
    DWORD Add(REFCLSID rclsid, IUnknown* object);

    /// Gives the reference back, after the last look-up that found the object; false for a number that is not
    /// in use.
    bool Remove(DWORD number);

    /// How many there are.
    std::uint32_t Count() const noexcept { return count_.load(); }

  private:
    struct Entry;
    using EntryPtr = std::shared_ptr<const Entry>;

    EntryPtr Find(REFCLSID rclsid);

    std::mutex mutex_;               // guards all that follows
    std::vector<EntryPtr> entries_;  // in the order of registration
    DWORD lastNumber_ = 0;
    std::atomic<std::uint32_t> count_ = 0;  // of the entries, to be read without the lock
};

/// The class objects of this process.
ClassObjects& ClassObjectsOfProcess() noexcept;

}  // namespace larynth
