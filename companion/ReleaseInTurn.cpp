// SPDX-License-Identifier: MIT
#include "companion/ReleaseInTurn.h"

#include <new>
#include <utility>
#include <vector>

namespace larynth {

namespace {

using Objects = std::vector<ComPtr<IUnknown>>;

/// What waits on this thread; null while nothing is being released.
constinit thread_local Objects* waiting = nullptr;

/// False, with the object as it was, when there is no memory for the line.
bool Queue(ComPtr<IUnknown>& object) noexcept {
    try {
        waiting->push_back(std::move(object));
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace

void ReleaseInTurn(ComPtr<IUnknown> object) noexcept {
    if (!object) return;
    if (waiting != nullptr && Queue(object)) return;
    Objects objects;
    Objects* const before = std::exchange(waiting, &objects);
    object.Release();
    for (std::size_t i = 0; i < objects.size(); ++i) {
        object = std::exchange(objects[i], {});
        object.Release();
    }
    waiting = before;
}

}  // namespace larynth
