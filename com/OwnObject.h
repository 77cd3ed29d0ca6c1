// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstring>

#include <larynth/Interface.h>

namespace larynth {

/// Recognises the objects of one class of this module, so that code that stands near the class may use it
/// directly where no client could tell the difference. The class names the interface by which it is called as
/// `Class::RecognisedBy`.
///
/// An object begins with the address of its virtual table, and a table belongs to one class of one module:
/// the comparison meets what a client would call, never a proxy or an override, and needs no answer of
/// QueryInterface that clients could see.
template <class Class>
class OwnObject {
  public:
    /// Learns the class's virtual table; whoever creates objects of the class calls it.
    static void Learn(Class& object) noexcept {
        const void* const table = TableOf(static_cast<typename Class::RecognisedBy*>(&object));
        // All objects of all threads have the same one: only the first writes where all of them read.
        if (table_.load(std::memory_order_relaxed) != table) table_.store(table, std::memory_order_relaxed);
    }

    /// The object behind `pointer`, without a reference, when it is of the class and stands alone: an outer
    /// object could answer queries in its part's place. Null otherwise. `pointer` is null or can be called.
    static Class* Find(IUnknown* pointer) noexcept {
        if (pointer == nullptr || TableOf(pointer) != table_.load(std::memory_order_relaxed)) return nullptr;
        auto* const object = static_cast<Class*>(static_cast<typename Class::RecognisedBy*>(pointer));
        return object->StandsAlone() ? object : nullptr;
    }

  private:
    static const void* TableOf(const IUnknown* object) noexcept {
        const void* table = nullptr;
        std::memcpy(&table, static_cast<const void*>(object), sizeof table);
        return table;
    }

    inline static std::atomic<const void*> table_ = nullptr;
};

}  // namespace larynth
