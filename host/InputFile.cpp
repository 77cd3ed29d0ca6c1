// SPDX-License-Identifier: MIT
#include "host/InputFile.h"

#include <array>
#include <cerrno>
#include <iostream>
#include <system_error>

#include "host/Errors.h"

namespace larynth {

InputFile::InputFile(const std::string& path) : name_(path), file_(path, std::ios::binary) {
    if (!file_) throw BadInput(path + ": cannot be opened: " + std::generic_category().message(errno));
}

InputFile InputFile::FromArgument(const std::string& path) {
    if (path == "-") return InputFile(StandardInput{});
    return InputFile(path);
}

std::istream& InputFile::Stream() { return isStandardInput_ ? std::cin : file_; }

std::string InputFile::ReadAll() {
    std::string bytes;
    std::array<char, 1 << 14> chunk;
    std::istream& stream = Stream();
    while (stream) {
        stream.read(chunk.data(), chunk.size());
        bytes.append(chunk.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad()) throw BadInput(name_ + ": cannot be read");
    return bytes;
}

}  // namespace larynth
