// SPDX-License-Identifier: MIT
#include "tests/support/Allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local int allocationsLeft = 0;  // 0: none is to fail
thread_local bool failed = false;

void* Allocate(std::size_t size) noexcept {
    if (allocationsLeft > 0 && --allocationsLeft == 0) {
        failed = true;
        return nullptr;
    }
    return std::malloc(size != 0 ? size : 1);
}

}  // namespace

AllocationFailure::AllocationFailure(int ordinal) noexcept {
    allocationsLeft = ordinal;
    failed = false;
}
AllocationFailure::~AllocationFailure() { allocationsLeft = 0; }
bool AllocationFailure::Happened() const noexcept { return failed; }

// The forms for arrays come here.
void* operator new(std::size_t size) {
    if (void* memory = Allocate(size)) return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
