// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <larynth/Interface.h>

namespace larynth {

/// A class identifier as the store and messages spell it: upper-case hexadecimal digits in braces.
std::string ClassText(REFCLSID id);

/// The class objects that the process offers by itself. No lock is held while one of them is called, and none
/// is taken while there are none.
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

  private:
    struct Entry;
    using EntryPtr = std::shared_ptr<const Entry>;

    EntryPtr Find(REFCLSID rclsid);

    std::mutex mutex_;               // guards all that follows
    std::vector<EntryPtr> entries_;  // in the order of registration
    DWORD lastNumber_ = 0;
    std::atomic<bool> empty_ = true;  // whether there are entries, to be read without the lock
};

}  // namespace larynth
