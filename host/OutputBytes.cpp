// SPDX-License-Identifier: MIT
// How bytes get into an output file: the same on every system.
#include <cerrno>
#include <system_error>
#include <unistd.h>

#include "host/Descriptors.h"
#include "host/Files.h"

namespace larynth {

void OutputFile::Write(std::span<const char> bytes) {
    if (buffer_.size() + bytes.size() > kBufferSize) Flush();
    if (bytes.size() <= kBufferSize) {
        buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
    } else if (!WriteAll(descriptor_, bytes)) {
        Fail("cannot be written");
    }
}

void OutputFile::Seek(std::uint64_t position) {
    Flush();
    if (lseek(descriptor_, static_cast<off_t>(position), SEEK_SET) < 0) Fail("cannot be written");
}

void OutputFile::CopyToDevice() {
    Seek(0);
    buffer_.resize(kBufferSize);
    ssize_t count = 0;
    while ((count = read(descriptor_, buffer_.data(), kBufferSize)) > 0) {
        if (!WriteAll(device_, std::span(buffer_).first(static_cast<std::size_t>(count)))) {
            Fail("cannot be written");
        }
    }
    if (count < 0) Fail("cannot be written");
}

void OutputFile::RemoveTemporary() noexcept {
    if (!temporary_.empty()) unlink(temporary_.c_str());
    temporary_.clear();
}

void OutputFile::Fail(const char* what) const {
    throw std::system_error(errno, std::generic_category(), Name() + ": " + what);
}

void WriteToStandardOutput(const std::string& text) {
    OutputFile output("-");
    output.Write(text);
    output.Commit();
}

}  // namespace larynth
