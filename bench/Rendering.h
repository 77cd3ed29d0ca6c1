// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "bench/Case.h"

namespace larynth::bench {

/// The ways from frames to samples.
enum class Path { Straight, StraightFlushing, Interfaces, Vectors };

struct PathName {
    Path path;
    std::string_view name;
};

/// StraightFlushing is the straight loop in the processor mode in which denormal numbers are zero.
inline constexpr std::array<PathName, 4> kPathNames{{{Path::Straight, "straight"},
                                                     {Path::StraightFlushing, "straight_flushing"},
                                                     {Path::Interfaces, "interfaces"},
                                                     {Path::Vectors, "vectors"}}};

/// False where a path has nothing to tell about a case.
bool Applies(Path path, const Case& one);

using Samples = std::vector<std::int16_t>;

/// A case about to be rendered on one path, with everything allocated. `samples`, unless null, takes what
/// comes out.
class Rendering {
  public:
    virtual ~Rendering() = default;

    /// Brings everything into the state in which a timed part begins: lead rendered, packets fresh.
    virtual void Prepare(Samples* samples) = 0;

    /// The timed part, or its first `count` frames.
    virtual void Render(std::size_t count, Samples* samples) = 0;
};

/// The case must outlive the rendering. The straight loop's noise begins with state 1.
std::unique_ptr<Rendering> MakeRendering(Path path, const Case& one);

}  // namespace larynth::bench
