// SPDX-License-Identifier: MIT
#include "runtime/store/RegistrationStore.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <strings.h>

#include <larynth/ModuleRuntime.h>

#include "runtime/Failure.h"

namespace larynth {

namespace {

// A key's row holds its whole path. The keys below a key are those between its path with a backslash and its
// path with a bracket, the next character.
constexpr char kPrepare[] = R"(
    CREATE TABLE keys (path TEXT NOT NULL COLLATE NOCASE PRIMARY KEY) WITHOUT ROWID;
    CREATE TABLE entries (path TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL COLLATE NOCASE,
                          value TEXT NOT NULL, PRIMARY KEY (path, name)) WITHOUT ROWID;
    PRAGMA application_id = 1282570616;
    PRAGMA user_version = 1;)";
constexpr int kApplicationId = 1282570616;  // tells the store from other databases
constexpr int kLayout = 1;                  // of the tables

bool IsRoot(std::string_view key) {
    return std::ranges::any_of(kLarynthRegistryRoots, [&](const LarynthRegistryRoot& root) {
        const std::string_view name = root.Name;
        return key.size() == name.size() && strncasecmp(key.data(), name.data(), name.size()) == 0;
    });
}

void CheckPath(std::string_view key) {
    if (!IsRoot(key.substr(0, key.find('\\')))) {
        throw Failure(E_INVALIDARG, "a key's path begins with the long name of a root: " + std::string(key));
    }
    if (key.ends_with('\\') || key.find("\\\\") != key.npos) {
        throw Failure(E_INVALIDARG, "a name in a key's path is empty: " + std::string(key));
    }
}

std::string LowestBelow(std::string_view key) { return std::string(key) + '\\'; }
std::string EndOfBelow(std::string_view key) { return std::string(key) + ']'; }

/// Empty for a variable that is not set.
std::filesystem::path PathIn(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr ? value : "";
}

}  // namespace

std::string UsersStoreFile() {
    if (const auto file = PathIn("LARYNTH_REGISTRY"); !file.empty()) return absolute(file).string();
    // A relative data folder does not count: it would be another one in each working folder.
    if (const auto data = PathIn("XDG_DATA_HOME"); data.is_absolute()) return data / "larynth/registry.db";
    if (const auto home = PathIn("HOME"); !home.empty()) return home / ".local/share/larynth/registry.db";
    return {};
}

std::string ClassText(REFCLSID id) {
    char text[39];
    const auto& last = id.Data4;
    std::snprintf(text, sizeof(text), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", id.Data1,
                  id.Data2, id.Data3, last[0], last[1], last[2], last[3], last[4], last[5], last[6], last[7]);
    return text;
}

void RegistrationStore::Begin() {
    if (inTransaction_) throw Failure(E_FAIL, "a transaction within a transaction");
    if (!database_) {
        CreateFolder();
        database_.emplace(file_, Database::Opening::kCreating);
    }
    database_->Execute("BEGIN IMMEDIATE");
    inTransaction_ = true;
    try {
        if (!IsPrepared()) database_->Execute(kPrepare);
    } catch (...) {
        Rollback();
        throw;
    }
}

void RegistrationStore::Commit() {
    Transaction().Execute("COMMIT");
    inTransaction_ = false;
}

void RegistrationStore::Rollback() {
    if (!inTransaction_) throw Failure(E_FAIL, "no transaction to end");
    inTransaction_ = false;
    if (database_->InTransaction()) database_->Execute("ROLLBACK");
}

void RegistrationStore::CreateKey(std::string_view key) {
    CheckPath(key);
    for (std::size_t end = 0; end != key.npos;) {
        end = key.find('\\', end + 1);
        Statement(Transaction(), "INSERT OR IGNORE INTO keys VALUES (?1)", {key.substr(0, end)}).Run();
    }
}

bool RegistrationStore::DeleteKey(std::string_view key) {
    CheckPath(key);
    if (IsRoot(key)) throw Failure(E_INVALIDARG, "a root stays: " + std::string(key));
    Database& database = Transaction();
    const std::string low = LowestBelow(key);
    const std::string end = EndOfBelow(key);
    Statement(database, "DELETE FROM entries WHERE path = ?1 OR (path > ?2 AND path < ?3)", {key, low, end})
        .Run();
    Statement(database, "DELETE FROM keys WHERE path = ?1 OR (path > ?2 AND path < ?3)", {key, low, end})
        .Run();
    return database.Changes() != 0;
}

void RegistrationStore::SetValue(std::string_view key, std::string_view name, std::string_view value) {
    CheckPath(key);
    Database& database = Transaction();
    Statement(database,
              "INSERT INTO entries SELECT path, ?2, ?3 FROM keys WHERE path = ?1"
              " ON CONFLICT (path, name) DO UPDATE SET value = excluded.value",
              {key, name, value})
        .Run();
    if (database.Changes() == 0) throw Failure(REGDB_E_KEYMISSING);
}

std::optional<std::string> RegistrationStore::Value(std::string_view key, std::string_view name) {
    CheckPath(key);
    if (!HoldsAnything()) return std::nullopt;
    Statement found(*database_, "SELECT value FROM entries WHERE path = ?1 AND name = ?2", {key, name});
    if (!found.Step()) return std::nullopt;
    return std::string(found.Text(0));
}

std::optional<RegistrationStore::Counts> RegistrationStore::Count(std::string_view key) {
    CheckPath(key);
    if (!HoldsAnything()) return std::nullopt;
    Statement counted(*database_,
                      "SELECT (SELECT count(*) FROM keys WHERE path > ?2 AND path < ?3"
                      "          AND instr(substr(path, length(?2) + 1), '\\') = 0),"
                      "       (SELECT count(*) FROM entries WHERE path = ?1 AND name <> '')"
                      " FROM keys WHERE path = ?1",
                      {key, LowestBelow(key), EndOfBelow(key)});
    if (!counted.Step()) return std::nullopt;
    return Counts{counted.Number(0), counted.Number(1)};
}

std::optional<std::string> RegistrationStore::Subkey(std::string_view key, int index) {
    CheckPath(key);
    if (index < 0 || !HoldsAnything()) return std::nullopt;
    const std::string place = std::to_string(index);
    Statement found(*database_,
                    "SELECT substr(path, length(?1) + 1) AS subkey FROM keys"
                    " WHERE path > ?1 AND path < ?2 AND instr(subkey, '\\') = 0"
                    " ORDER BY path LIMIT 1 OFFSET CAST(?3 AS INTEGER)",
                    {LowestBelow(key), EndOfBelow(key), place});
    if (!found.Step()) return std::nullopt;
    return std::string(found.Text(0));
}

/// False as long as nothing was ever written.
bool RegistrationStore::HoldsAnything() {
    if (!database_) {
        std::error_code unclear;
        if (!std::filesystem::exists(file_, unclear) && !unclear) return false;
        database_.emplace(file_, Database::Opening::kExisting);
    }
    return IsPrepared();
}

/// False for an empty database, Failure for one that is something else.
bool RegistrationStore::IsPrepared() {
    // In this order: another process may be preparing the store, in one transaction.
    if (database_->Number("SELECT count(*) FROM sqlite_schema") == 0) return false;
    if (database_->Number("PRAGMA application_id") != kApplicationId) {
        throw Failure(REGDB_E_READREGDB, file_ + ": is a database, but no registration store");
    }
    if (database_->Number("PRAGMA user_version") != kLayout) {
        throw Failure(REGDB_E_READREGDB, file_ + ": is the registration store of another version");
    }
    return true;
}

void RegistrationStore::CreateFolder() const {
    if (file_.empty()) {
        throw Failure(
            REGDB_E_WRITEREGDB,
            "no place for the registration store: LARYNTH_REGISTRY, XDG_DATA_HOME and HOME are not set");
    }
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::path(file_).parent_path();
    if (!folder.empty()) std::filesystem::create_directories(folder, error);
    if (error) throw Failure(REGDB_E_WRITEREGDB, folder.string() + ": " + error.message());
}

/// For writing. A failure such as a full disk may have ended the transaction with all that was written in it.
Database& RegistrationStore::Transaction() {
    if (!inTransaction_) throw Failure(E_FAIL, "nothing is written outside a transaction");
    if (!database_->InTransaction()) throw Failure(REGDB_E_WRITEREGDB);
    return *database_;
}

}  // namespace larynth
