// SPDX-License-Identifier: MIT
#include "speech/SpeechFrame.h"

#include <string_view>

namespace larynth {

std::string SpeechItemName(std::size_t item) {
    constexpr std::array<std::string_view, kF1> kSingle{"F0", "OQ", "FL",  "FLT",  "TL",  "AV",  "AH",
                                                        "AF", "AB", "FNP", "BWNP", "FNZ", "BWNZ"};
    constexpr std::array<std::string_view, 2> kFormant{"F", "BW"};
    constexpr std::array<std::string_view, 3> kParallel{"PF", "PBW", "PG"};
    if (item < kF1) return std::string(kSingle[item]);
    if (item < kPF0) return std::string(kFormant[(item - kF1) % 2]) + std::to_string((item - kF1) / 2 + 1);
    return std::string(kParallel[(item - kPF0) % 3]) + std::to_string((item - kPF0) / 3);
}

}  // namespace larynth
