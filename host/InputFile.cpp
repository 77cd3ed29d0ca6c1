// SPDX-License-Identifier: MIT
#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "host/Descriptors.h"
#include "host/Files.h"
#include "input/BadInput.h"

namespace larynth {
namespace {

int OpenToRead(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | kFileFlags);
    if (descriptor >= 0) return descriptor;
    throw BadInput(path + ": cannot be opened: " + std::generic_category().message(errno));
}

}  // namespace

InputFile::InputFile(const std::string& path, Use use) : InputFile(path, OpenToRead(path), use) {}

InputFile::InputFile(std::string name, int descriptor, Use use)
    : name_(std::move(name)),
      descriptor_(descriptor),
      start_(lseek(descriptor, 0, SEEK_CUR)),
      buffer_(kBufferSize) {
    stream_.exceptions(std::ios::badbit);  // lets through what reading raises
    if (start_ >= 0 || use == Use::Once) return;
    copy_ = OpenScratch();
    if (copy_ >= 0) return;
    const int reason = errno;
    if (descriptor_ > STDERR_FILENO) close(descriptor_);
    throw std::system_error(reason, std::generic_category(), name_ + ": cannot be copied");
}

InputFile::~InputFile() {
    for (const int descriptor : {descriptor_, copy_}) {
        if (descriptor > STDERR_FILENO) close(descriptor);
    }
}

InputFile InputFile::FromArgument(const std::string& path, Use use) {
    if (path == "-") return {"<stdin>", STDIN_FILENO, use};
    return InputFile(path, use);
}

InputFile::int_type InputFile::underflow() {
    ssize_t count = 0;
    do count = read(descriptor_, buffer_.data(), static_cast<unsigned>(buffer_.size()));
    while (count < 0 && errno == EINTR);
    if (count < 0) throw BadInput(name_ + ": cannot be read: " + std::generic_category().message(errno));
    const auto bytes = std::span(buffer_).first(static_cast<std::size_t>(count));
    if (copy_ >= 0 && start_ < 0 && !WriteAll(copy_, bytes)) {
        throw std::system_error(errno, std::generic_category(), name_ + ": cannot be copied");
    }
    read_ += bytes.size();
    setg(buffer_.data(), buffer_.data(), buffer_.data() + count);
    return count == 0 ? traits_type::eof() : traits_type::to_int_type(buffer_[0]);
}

void InputFile::Rewind() {
    if (start_ < 0) {
        std::swap(descriptor_, copy_);
        start_ = 0;
    }
    if (lseek(descriptor_, start_, SEEK_SET) < 0) throw BadInput(name_ + ": cannot be read twice");
    read_ = 0;
    setg(nullptr, nullptr, nullptr);
    stream_.clear();
}

std::uint64_t InputFile::Size() const {
    struct stat status {};
    const bool isKnown = fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
    return isKnown && start_ >= 0 && status.st_size > start_
               ? static_cast<std::uint64_t>(status.st_size - start_)
               : 0;
}

std::uint64_t InputFile::Consumed() const { return read_ - static_cast<std::uint64_t>(egptr() - gptr()); }

std::string InputFile::ReadAll(std::size_t most) {
    std::string bytes;
    while (stream_ && bytes.size() <= most) {
        std::array<char, 1 << 14> chunk;
        stream_.read(chunk.data(), chunk.size());
        bytes.append(chunk.data(), static_cast<std::size_t>(stream_.gcount()));
    }
    if (bytes.size() <= most) return bytes;
    throw BadInput(name_ + ": expected at most " + std::to_string(most) + " bytes, found more");
}

}  // namespace larynth
