// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <fstream>
#include <istream>
#include <span>
#include <string>

namespace larynth {

/// A file to read. Raises BadInput when it cannot be opened.
class InputFile {
  public:
    explicit InputFile(const std::string& path);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// The same, but "-" is standard input.
    static InputFile FromArgument(const std::string& path);

    const std::string& Name() const noexcept { return name_; }  ///< For messages.
    std::istream& Stream();

    /// The bytes that are left. Raises BadInput when they cannot be read.
    std::string ReadAll();

  private:
    struct StandardInput {};
    explicit InputFile(StandardInput) : name_("<stdin>"), isStandardInput_(true) {}

    std::string name_;
    bool isStandardInput_ = false;
    std::ifstream file_;
};

/// A file that comes into being as a whole or not at all.
///
/// The bytes go to a file with another name in the same folder, which takes the target's place when it is
/// complete; a target that exists is untouched until then. Signals that would end the program are held back
/// meanwhile, so that no half-written file stays behind. "-" is standard output; a device or a pipe is
/// written directly. All failures are std::system_error.
class OutputFile {
  public:
    explicit OutputFile(const std::string& path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();  ///< Removes what was written, unless it was committed.

    void Write(std::span<const char> bytes);
    /// Brings what was written to the disk. Where several files belong together, all are finished before the
    /// first is committed, so that a full disk stops them all.
    void Finish();
    /// Finishes, and lets the file take the target's place.
    void Commit();

  private:
    void OpenBesides();
    void TakeMode(bool replaces, unsigned mode);
    void Close();
    [[noreturn]] void Fail(const char* what) const;

    std::string name_;       // as the user gave it, for messages
    std::string target_;     // symbolic links resolved
    std::string temporary_;  // empty: written directly
    int descriptor_ = -1;    // -1: closed
    bool holdsSignals_ = false;
    sigset_t signalsBefore_;
};

/// The whole text to standard output, or std::system_error.
void WriteToStandardOutput(const std::string& text);

}  // namespace larynth
