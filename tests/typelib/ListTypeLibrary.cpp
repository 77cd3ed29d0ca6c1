// SPDX-License-Identifier: MIT
/// usage: list_type_library FILE. Prints the type library of a module or ".tlb" file.
#include <cstdio>
#include <exception>

#include "tests/typelib/Listing.h"

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::fputs("usage: list_type_library FILE\n", stderr);
        return 2;
    }
    std::fputs(Listing(*LoadLibraryOf(argv[1]).Get()).c_str(), stdout);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
