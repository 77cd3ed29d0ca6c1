// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <span>
#include <streambuf>
#include <string>
#include <vector>

namespace larynth {

class HeldSignals;

/// Whether two names lead to one regular file, which need not exist yet: through links, or as a standard
/// stream under its name in /dev. Devices, pipes and sockets are never the same: each use of one is a file of
/// its own.
bool IsSameFile(const std::string& one, const std::string& other);

/// A file to read, as often as wanted: what can be read only once, a pipe or a terminal, is copied meanwhile
/// to an unnamed file in the folder for temporary files, unless the file is not to be read again. Raises
/// BadInput when it cannot be opened or read, also out of the stream's functions, and std::system_error when
/// it cannot be copied.
class InputFile : private std::streambuf {
  public:
    enum class Use { Repeated, Once };

    explicit InputFile(const std::string& path, Use use = Use::Repeated);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() override;

    /// The same, but "-" is standard input, from where it stands.
    static InputFile FromArgument(const std::string& path, Use use = Use::Repeated);

    const std::string& Name() const noexcept { return name_; }  ///< For messages.
    std::istream& Stream() noexcept { return stream_; }
    void Rewind();                   ///< Back to the first byte. What was not read yet of a pipe is left out.
    std::uint64_t Size() const;      ///< Bytes from where it stood; 0 where that is not known.
    std::uint64_t Consumed() const;  ///< Bytes that the stream has given so far.

    /// The bytes that are left, which serve as a whole and so are limited: BadInput for more than `most`.
    std::string ReadAll(std::size_t most);

  private:
    InputFile(std::string name, int descriptor, Use use);
    int_type underflow() override;

    std::string name_;
    int descriptor_;
    int copy_ = -1;           // gets what is read; -1: the descriptor can be read again
    std::int64_t start_;      // below 0: can be read once only
    std::uint64_t read_ = 0;  // bytes, up to the buffer's end
    std::vector<char> buffer_;
    std::istream stream_{this};
};

/// A file that comes into being as a whole or not at all.
///
/// The bytes go to a file without a name in the target's folder, which gets the target's name when it is
/// complete; a target that exists is untouched until then, and a program that is killed leaves nothing. A
/// file system that has no unnamed files gets a hidden one, which is removed on failure; signals that would
/// end the program are held back meanwhile and end the writing. A link is followed, also to where there is
/// nothing yet. "-" is standard output; a device or a pipe is written directly. All failures are
/// std::system_error.
class OutputFile {
  public:
    /// How the bytes come: one after the other, or also over what was written before. A device or a pipe then
    /// gets its bytes all at once when the file is finished.
    enum class Access { Sequential, Seeking };

    explicit OutputFile(const std::string& path, Access access = Access::Sequential);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();  ///< Removes what was written, unless it was committed.

    /// For messages.
    std::string Name() const { return name_ == "-" ? "standard output" : name_; }

    void Write(std::span<const char> bytes);
    /// Where the next bytes go; only with Access::Seeking.
    void Seek(std::uint64_t position);
    void Flush();  ///< Hands on what a reader of standard output or of a pipe may be waiting for.
    /// Lets the files take their targets' places, all of them or none: each is complete and on the disk
    /// before the first one gets its name, and when a name cannot be given, the names given before are taken
    /// back.
    static void Commit(const std::vector<OutputFile*>& files);
    void Commit() { Commit({this}); }

  private:
    void OpenBesides();
    void TakeMode(bool replaces, unsigned mode);
    void Finish();
    void CopyToDevice();
    void TakePlace(bool mayHaveToLeave);
    void LinkBesides(const std::string& unnamed);
    void LeavePlace() noexcept;
    void RemoveTemporary() noexcept;
    [[noreturn]] void Fail(const char* what) const;

    std::string name_;       // as the user gave it
    std::string target_;     // symbolic links resolved; empty: written directly
    std::string temporary_;  // hidden name in the target's folder; empty: none
    std::vector<char> buffer_;
    std::unique_ptr<HeldSignals> heldSignals_;  // while the file that is written has a name
    int descriptor_ = -1;
    int device_ = -1;         // gets the bytes of a file in which positions change; -1: none
    bool tookPlace_ = false;  // and can leave it again
};

/// The whole text to standard output, or std::system_error.
void WriteToStandardOutput(const std::string& text);

}  // namespace larynth
