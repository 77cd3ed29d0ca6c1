// SPDX-License-Identifier: MIT
#pragma once

#include <exception>

namespace Zelvani {

/// Thrown by value for a bad sample frequency. The text is constant and not owned.
struct CKlattException {
    int firstCode;
    int secondCode;
    const char* message;
};

/// A failed check inside the module. No exception leaves an interface method: it becomes a status code there.
/// All texts are constant, not owned, and may be null.
class Exception : public std::exception {
  public:
    Exception(const char* condition, const char* message, const char* file, int line) noexcept
        : message_(message), condition_(condition), file_(file), line_(line) {}

    /// The name of the class, not the message.
    const char* what() const noexcept override { return "Zelvani Exception"; }

    /// What went wrong.
    virtual const char* Message() const noexcept { return message_; }

    /// The kind of check that failed.
    virtual const char* Condition() const noexcept { return condition_; }

    /// Where the check stands; the line is 0 when unknown.
    const char* File() const noexcept { return file_; }
    int Line() const noexcept { return line_; }

  private:
    const char* message_;
    const char* condition_;
    const char* file_;
    int line_;
};

}  // namespace Zelvani
