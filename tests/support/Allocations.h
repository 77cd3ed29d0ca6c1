// SPDX-License-Identifier: MIT
/// Replaces operator new, in the program and in the modules that it loads, so that allocations can be made to
/// fail.
#pragma once

/// While it lives, the calling thread's allocation number `ordinal` through operator new fails; 1 is the next
/// one.
class AllocationFailure {
  public:
    explicit AllocationFailure(int ordinal) noexcept;
    ~AllocationFailure();
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;

    bool Happened() const noexcept;
};
