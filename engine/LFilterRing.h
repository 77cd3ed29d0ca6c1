// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <utility>
#include <vector>

namespace larynth {

/// The recent history of one signal. Its size is a power of two, so that an index is a mask and not a
/// division.
class LFilterRing {
  public:
    explicit LFilterRing(std::size_t count) { Resize(count); }

    /// Makes room for the `count` newest values and clears the history.
    void Resize(std::size_t count);

    /// How many values back the filter reads.
    std::size_t Count() const { return offset_; }

    void Write(double value) { storage_[(offset_ + position_++) & mask_] = value; }

    /// The value written `age` writes before the newest one; 0 for times before the first write.
    double Recent(std::size_t age) const { return storage_[(offset_ + position_ - 1 - age) & mask_]; }

  private:
    std::vector<double> storage_;
    std::size_t offset_ = 0;
    std::size_t position_ = 0;  // values written; wraps around, harmless under a power-of-two mask
    std::size_t mask_ = 0;
};

inline void LFilterRing::Resize(std::size_t count) {
    std::vector<double> cleared(std::bit_ceil(count), 0.0);
    storage_ = std::move(cleared);
    offset_ = count;
    position_ = 0;
    mask_ = storage_.size() - 1;
}

}  // namespace larynth
