// SPDX-License-Identifier: MIT
#include "runtime/store/Database.h"

#include <larynth/Base.h>

#include "runtime/Failure.h"

namespace larynth {

namespace {

sqlite3* Open(const std::string& file) {
    sqlite3* connection = nullptr;
    // Also a reader may have to undo what a killed writer left half done, so it opens for writing; where the
    // file may not be written, SQLite opens it for reading. The result shows again in the error code.
    sqlite3_open_v2(file.c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
    if (connection == nullptr) throw std::bad_alloc();
    return connection;
}

}  // namespace

Database::Database(const std::string& file) : file_(file), connection_(Open(file), sqlite3_close) {
    if (sqlite3_errcode(connection_.get()) != SQLITE_OK) Raise(true);
}

void Database::Raise(bool reading) const {
    const std::string reason = sqlite3_errmsg(connection_.get());
    const HRESULT code = reading ? REGDB_E_READREGDB : REGDB_E_WRITEREGDB;
    switch (sqlite3_errcode(connection_.get())) {
        case SQLITE_NOMEM:
            // SQLite says so of some damaged files, too.
            throw Failure(E_OUTOFMEMORY, file_ + ": " + reason + ", or the registration store is damaged");
        case SQLITE_CORRUPT:
            RaiseDamaged(reason);
        case SQLITE_NOTADB:
            RaiseUnusable("is no registration store, or its beginning is damaged (" + reason + ")");
        case SQLITE_BUSY:
            throw Failure(code, file_ + ": another process is writing and does not end (" + reason +
                                    "); try again later");
        case SQLITE_IOERR:
            throw Failure(code,
                          file_ + ": " + reason +
                              "; a full disk, a limit on the size of files, or a broken disk does that");
        default:
            throw Failure(code, file_ + ": " + reason);
    }
}

void Database::RaiseUnusable(const std::string& reason) const {
    throw Failure(REGDB_E_READREGDB, file_ + ": " + reason +
                                         "; move the file away and register the modules again, or name "
                                         "another one in LARYNTH_REGISTRY");
}

void Database::RaiseDamaged(const std::string& reason) const {
    RaiseUnusable(reason + "; the registration store is damaged");
}

void Database::Execute(const char* statements) {
    if (sqlite3_exec(connection_.get(), statements, nullptr, nullptr, nullptr) != SQLITE_OK) Raise(false);
}

int Database::Number(const char* statement) {
    Statement asked(*this, statement, {});
    return asked.Step() ? asked.Number(0) : 0;
}

Statement::Statement(Database& database, const char* text, std::initializer_list<std::string_view> parameters)
    : database_(database), prepared_(nullptr, sqlite3_finalize) {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(database.connection_.get(), text, -1, &prepared, nullptr) != SQLITE_OK) {
        database.Raise(true);  // it reads the schema
    }
    prepared_.reset(prepared);
    int number = 0;
    for (const std::string_view value : parameters) {
        if (sqlite3_bind_text(prepared, ++number, value.data(), static_cast<int>(value.size()),
                              SQLITE_TRANSIENT) != SQLITE_OK) {
            database.Raise(true);
        }
    }
}

bool Statement::Step() {
    switch (sqlite3_step(prepared_.get())) {
        case SQLITE_ROW:
            return true;
        case SQLITE_DONE:
            return false;
        default:
            database_.Raise(sqlite3_stmt_readonly(prepared_.get()) != 0);
    }
}

std::string_view Statement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared_.get(), column));
    if (text == nullptr) return {};
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(prepared_.get(), column))};
}

}  // namespace larynth
