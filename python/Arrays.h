// SPDX-License-Identifier: MIT
/// Between arrays of numpy and the face's values, without a copy.
#pragma once

#include <memory>
#include <pybind11/numpy.h>
#include <span>
#include <utility>
#include <vector>

#include <larynth/Speech.h>

namespace larynth {

/// The structured dtype with the layout of a frame in memory: "length" and the items by their names.
pybind11::dtype FrameDtype();

/// The frames in an array's own memory, one-dimensional and contiguous as the package makes them. It must
/// outlive the result; other threads may change its values meanwhile, but not its memory.
std::span<const KlattFrame> FramesIn(const pybind11::array& frames);

/// An array of the vector's own memory, which lives as long as the array.
template <class Value>
pybind11::array ArrayOf(std::vector<Value>&& values, const pybind11::dtype& dtype) {
    auto held = std::make_unique<std::vector<Value>>(std::move(values));
    const auto drop = [](void* vector) { delete static_cast<std::vector<Value>*>(vector); };
    const pybind11::capsule owner(held.get(), drop);
    const std::vector<Value>& kept = *held.release();
    return pybind11::array(dtype, {kept.size()}, {sizeof(Value)}, kept.data(), owner);
}

}  // namespace larynth
