// SPDX-License-Identifier: MIT
#include "runtime/StackWindow.h"

#include <pthread.h>

namespace larynth {

namespace {

// Reached without a call of the loader: this is part of every probe.
[[gnu::tls_model("initial-exec")]] constinit thread_local StackBounds ownStack;

[[gnu::noinline]] void AskSystem(StackBounds& stack) noexcept {
    stack.known = true;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return;
    void* low = nullptr;
    std::size_t size = 0;
    if (pthread_attr_getstack(&attributes, &low, &size) == 0) {
        stack.low = reinterpret_cast<std::uintptr_t>(low);
        stack.high = stack.low + size;
    }
    pthread_attr_destroy(&attributes);
}

}  // namespace

const StackBounds& OwnStackBounds() noexcept {
    StackBounds& stack = ownStack;
    if (!stack.known) AskSystem(stack);
    return stack;
}

}  // namespace larynth
