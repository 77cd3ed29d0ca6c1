// SPDX-License-Identifier: MIT
#include "runtime/store/RegistrationStore.h"

#include <algorithm>
#include <cstdio>
#include <strings.h>

#include <larynth/ModuleRuntime.h>

#include "runtime/Failure.h"
#include "runtime/store/StoreFile.h"

namespace larynth {

namespace {

// Longer than any writer needs, also when dozens of processes register at once.
constexpr int kWritersPatience = 60'000;  // ms
constexpr int kReadersPatience = 1000;    // ms; a program that looks a class up is not to hang

// A key's row holds its whole path. The keys below a key are those between its path with a backslash and its
// path with a bracket, the next character.
constexpr char kTableOfKeys[] =
    "CREATE TABLE keys (path TEXT NOT NULL COLLATE NOCASE PRIMARY KEY) WITHOUT ROWID";
constexpr char kTableOfEntries[] =
    R"(CREATE TABLE entries (path TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL COLLATE NOCASE,
                          value TEXT NOT NULL, PRIMARY KEY (path, name)) WITHOUT ROWID)";
constexpr char kNumbers[] = "PRAGMA application_id = 1282570616; PRAGMA user_version = 1";
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

}  // namespace

void RegistrationStore::Begin() {
    if (inTransaction_) throw Failure(E_FAIL, "a transaction within a transaction");
    if (!joint_) return BeginAlone();
    inTransaction_ = true;
    Transaction().Execute("SAVEPOINT part");
}

void RegistrationStore::BeginAlone() {
    if (!Open(REGDB_E_WRITEREGDB)) {
        CreateStoreFile(file_);
        Open(REGDB_E_WRITEREGDB);
    }
    database_->SetPatience(kWritersPatience);
    database_->Execute("BEGIN IMMEDIATE");
    inTransaction_ = true;
    try {
        Prepare();
    } catch (...) {
        Rollback();
        throw;
    }
}

void RegistrationStore::Commit() {
    Transaction().Execute(joint_ ? "RELEASE part" : "COMMIT");
    inTransaction_ = false;
    database_->SetPatience(kReadersPatience);
}

void RegistrationStore::Rollback() {
    if (!inTransaction_) throw Failure(E_FAIL, "no transaction to end");
    inTransaction_ = false;
    database_->SetPatience(kReadersPatience);
    if (database_->InTransaction())
        database_->Execute(joint_ ? "ROLLBACK TO part; RELEASE part" : "ROLLBACK");
}

void RegistrationStore::BeginJoint(Creation creation) {
    if (!Open(REGDB_E_WRITEREGDB) && creation == Creation::kNever) database_.emplace(":memory:");
    Begin();
    inTransaction_ = false;
    joint_ = true;
}

void RegistrationStore::EndJoint(bool keep) {
    if (inTransaction_) Rollback();  // a part that nobody has ended
    joint_ = false;
    inTransaction_ = true;
    if (!keep) return Rollback();
    try {
        Commit();
    } catch (...) {
        Rollback();
        throw;
    }
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

/// False when there is no file yet; `code` is that of the failure for one that must not be used.
bool RegistrationStore::Open(HRESULT code) {
    if (database_) return true;
    const std::string file = ExistingStoreFile(file_, code);
    if (!file.empty()) database_.emplace(file).SetPatience(kReadersPatience);
    return database_.has_value();
}

/// False as long as nothing was ever written.
bool RegistrationStore::HoldsAnything() { return Open(REGDB_E_READREGDB) && IsPrepared(); }

/// False for an empty database, Failure for one that is something else. Costs a look-up little: the schema is
/// read for any statement.
bool RegistrationStore::IsPrepared() {
    // In this order: another process may be preparing the store, in one transaction.
    Statement tables(*database_, "SELECT count(*), total(sql IN (?1, ?2)) FROM sqlite_schema",
                     {kTableOfKeys, kTableOfEntries});
    tables.Step();
    if (tables.Number(0) == 0) return false;
    if (database_->Number("PRAGMA application_id") != kApplicationId) {
        database_->RaiseUnusable("is a database, but no registration store");
    }
    if (database_->Number("PRAGMA user_version") != kLayout) {
        database_->RaiseUnusable("is the registration store of another version of this program");
    }
    // Nothing else is touched: a foreign table, view or trigger could do more than hold what is looked up.
    if (tables.Number(0) != 2 || tables.Number(1) != 2) database_->RaiseDamaged("it has other tables");
    return true;
}

/// At the start of a transaction. To look at the whole file takes about as long as one commit.
void RegistrationStore::Prepare() {
    const bool prepared = IsPrepared();
    Statement check(*database_, "PRAGMA integrity_check(1)", {});
    check.Step();
    const std::string_view result = check.Text(0);  // of several lines, the last of which says most
    if (result != "ok") database_->RaiseDamaged(std::string(result.substr(result.rfind('\n') + 1)));
    if (prepared) return;
    for (const char* statement : {kTableOfKeys, kTableOfEntries, kNumbers}) database_->Execute(statement);
}

/// For writing. A failure such as a full disk may have ended the transaction with all that was written in it.
Database& RegistrationStore::Transaction() {
    if (!inTransaction_) throw Failure(E_FAIL, "nothing is written outside a transaction");
    if (!database_->InTransaction()) throw Failure(REGDB_E_WRITEREGDB);
    return *database_;
}

}  // namespace larynth
