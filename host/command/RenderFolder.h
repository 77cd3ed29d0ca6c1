// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace larynth {

/// A sound to be made.
struct RenderJob {
    std::string input;
    std::string output;
    std::string labels{};  ///< Empty: none wanted.
};

/// Where many inputs become sounds of the same names.
struct RenderFolder {
    std::string output;
    std::string labels;     ///< Folder of the labels; empty: none wanted.
    std::string extension;  ///< Of the sounds, as ".wav"; empty: not said.
    /// Files from which all sounds are made, as a voice's.
    std::vector<std::string> settings{};
    /// Sounds that are there, and not older than what they are made from, are made again.
    bool force = false;
    std::size_t processes = 0;  ///< That run at a time; 0: not said.
};

/// Makes a sound of each input, in a process of its own, so that the noise of each begins as if it were made
/// alone. Makes the folders that are missing. The others are made when one fails.
/// Raises BadInput before anything is made for two inputs with one output and for an output that is an input;
/// and at the end, with the summary, BadInput or std::runtime_error for what `render` raised in a process.
void RenderIntoFolder(const RenderFolder& folder, const std::vector<std::string>& inputs,
                      const std::function<void(const RenderJob&)>& render);

}  // namespace larynth
