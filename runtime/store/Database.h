// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace larynth {

/// A connection to a database file, used by one thread at a time. What fails raises Failure with
/// REGDB_E_READREGDB or REGDB_E_WRITEREGDB and a text that names the file, or std::bad_alloc.
class Database {
  public:
    /// The file exists, and is looked at only when it is first used. ":memory:" is a database of its own in
    /// memory.
    explicit Database(const std::string& file);

    /// How long the statements that follow wait for other processes; at first not at all.
    void SetPatience(int milliseconds) noexcept { sqlite3_busy_timeout(connection_.get(), milliseconds); }

    /// Runs statements that give no rows.
    void Execute(const char* statements);

    /// The number that a statement such as a pragma gives.
    int Number(const char* statement);

    /// Raise Failure: what is wrong, and what to do.
    [[noreturn]] void RaiseUnusable(const std::string& reason) const;
    [[noreturn]] void RaiseDamaged(const std::string& reason) const;

    bool InTransaction() const noexcept { return sqlite3_get_autocommit(connection_.get()) == 0; }

    /// Rows that the last inserting or deleting statement changed.
    int Changes() const noexcept { return sqlite3_changes(connection_.get()); }

  private:
    friend class Statement;
    using Connection = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

    [[noreturn]] void Raise(bool reading) const;

    std::string file_;
    Connection connection_;
};

/// One run of a statement with its parameters. Ends when it is destroyed.
class Statement {
  public:
    /// The texts stand for ?1, ?2, …
    Statement(Database& database, const char* text, std::initializer_list<std::string_view> parameters);

    /// Goes to the next row; false when there is none.
    bool Step();
    /// Runs a statement that gives no rows.
    void Run() { static_cast<void>(Step()); }

    /// Of the current row; columns count from 0. A text is valid until the next step.
    std::string_view Text(int column) const;
    int Number(int column) const { return sqlite3_column_int(prepared_.get(), column); }

  private:
    Database& database_;
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> prepared_;
};

}  // namespace larynth
