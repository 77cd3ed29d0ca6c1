// SPDX-License-Identifier: MIT
#include "bench/Rendering.h"

#include "bench/ComponentRendering.h"
#include "bench/StraightRendering.h"

namespace larynth::bench {

bool Applies(Path path, const Case& one) {
    switch (path) {
        case Path::Straight:
            return one.HasStraightLoop();
        case Path::StraightFlushing:
            return one.name == "silence";  // where denormal numbers turn up
        case Path::Interfaces:
        case Path::Vectors:
            return true;
    }
    return false;
}

std::unique_ptr<Rendering> MakeRendering(Path path, const Case& one) {
    if (path == Path::Straight || path == Path::StraightFlushing) {
        return std::make_unique<StraightRendering>(one, path == Path::StraightFlushing);
    }
    return std::make_unique<ComponentRendering>(one, path == Path::Interfaces);
}

}  // namespace larynth::bench
