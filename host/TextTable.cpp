// SPDX-License-Identifier: MIT
#include "host/TextTable.h"

#include <algorithm>

namespace larynth {

std::string AlignedText(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i + 1 < row.size(); ++i) {
            text += row[i] + std::string(widths[i] + 2 - row[i].size(), ' ');
        }
        text += row.back() + '\n';
    }
    return text;
}

}  // namespace larynth
