// SPDX-License-Identifier: MIT
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <larynth/Registry.h>

#include "tests/support/Code.h"
#include "tests/support/TestStore.h"

namespace {

using testing::HasSubstr;

#define HKCR "HKEY_CLASSES_ROOT"

class RegistryTest : public testing::Test {
  protected:
    /// Creates keys, each with its path as default value.
    void Write(std::initializer_list<const char*> keys) {
        ASSERT_EQ(Code(view_->Begin()), "S_OK") << LarynthLastError();
        for (const char* key : keys) {
            ASSERT_EQ(Code(view_->CreateKey(key)), "S_OK") << LarynthLastError();
            ASSERT_EQ(Code(view_->SetValue(key, "", key)), "S_OK") << LarynthLastError();
        }
        ASSERT_EQ(Code(view_->Commit()), "S_OK") << LarynthLastError();
    }

    /// The value in another view, or the code of the failure.
    static std::string Value(const char* key, const char* name) {
        const auto other = TestStore::Open();
        LPCSTR value = nullptr;
        const HRESULT hr = other->GetValue(key, name, &value);
        return SUCCEEDED(hr) ? value : Code(hr);
    }

    TestStore store_;
    ComPtr<ILarynthRegistry> view_ = TestStore::Open();
};

/// Empty for a folder.
std::string ContentOf(const std::filesystem::path& file) {
    if (!std::filesystem::is_regular_file(file)) return {};
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

TEST_F(RegistryTest, NamesCompareWithoutCaseAndKeepTheirFirstSpelling) {
    Write({HKCR "\\Larynth\\Voice"});
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->CreateKey("hkey_classes_root\\LARYNTH\\voice")), "S_OK");
    EXPECT_EQ(Code(view_->SetValue(HKCR "\\larynth\\VOICE", "Model", "both")), "S_OK");
    EXPECT_EQ(Code(view_->SetValue(HKCR "\\larynth\\VOICE", "MODEL", "caf\u00e9")), "S_OK");
    ASSERT_EQ(Code(view_->Commit()), "S_OK");
    EXPECT_EQ(Value("HKEY_Classes_Root\\LARYNTH\\Voice", "mOdEl"), "caf\u00e9");
    EXPECT_EQ(TestStore::Listing(*view_.Get(), HKCR),
              HKCR "\n" HKCR "\\Larynth\n" HKCR "\\Larynth\\Voice = " HKCR "\\Larynth\\Voice + 1\n");
}

TEST_F(RegistryTest, WhatIsNotThereIsSaidToBeMissing) {
    for (const bool written : {false, true}) {
        if (written) Write({HKCR "\\A"});
        LPCSTR text = nullptr;
        int counts[2] = {};
        EXPECT_EQ(Code(view_->GetValue(HKCR "\\B", "", &text)), "REGDB_E_KEYMISSING");
        EXPECT_EQ(Code(view_->GetValue(HKCR "\\A", "Name", &text)), "REGDB_E_KEYMISSING");
        EXPECT_EQ(Code(view_->GetCounts(HKCR "\\B", &counts[0], &counts[1])), "REGDB_E_KEYMISSING");
        for (const int index : {-1, 1}) {
            EXPECT_EQ(Code(view_->GetSubkey(HKCR, index, &text)), "REGDB_E_KEYMISSING");
        }
    }
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->SetValue(HKCR "\\B", "", "")), "REGDB_E_KEYMISSING");
    EXPECT_EQ(Code(view_->DeleteKey(HKCR "\\B")), "S_FALSE");
}

TEST_F(RegistryTest, DeletingAKeyTakesWhatIsBelowItAndNothingBesideIt) {
    Write({HKCR "\\A", HKCR "\\A\\B", HKCR "\\A\\B\\C", HKCR "\\a\\z", HKCR "\\A]", HKCR "\\A]\\D",
           HKCR "\\AB", HKCR "\\A B", HKCR "\\A.B", HKCR "\\A[", "HKEY_USERS\\A"});
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->DeleteKey(HKCR "\\a")), "S_OK");
    ASSERT_EQ(Code(view_->Commit()), "S_OK");
    EXPECT_EQ(TestStore::Listing(*view_.Get(), HKCR),
              HKCR "\n" HKCR "\\A B = " HKCR "\\A B\n" HKCR "\\A.B = " HKCR "\\A.B\n" HKCR "\\A[ = " HKCR
                   "\\A[\n" HKCR "\\A] = " HKCR "\\A]\n" HKCR "\\A]\\D = " HKCR "\\A]\\D\n" HKCR
                   "\\AB = " HKCR "\\AB\n");
    EXPECT_EQ(Value("HKEY_USERS\\A", ""), "HKEY_USERS\\A");
    // Nothing of the old key comes back with a new one.
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->CreateKey(HKCR "\\A\\B")), "S_OK");
    EXPECT_EQ(TestStore::Listing(*view_.Get(), HKCR "\\A"), HKCR "\\A\n" HKCR "\\A\\B\n");
}

TEST_F(RegistryTest, OnlyKeysDirectlyBelowAndNamedValuesAreCounted) {
    Write({HKCR "\\A\\B\\C", HKCR "\\A\\D"});
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    ASSERT_EQ(Code(view_->SetValue(HKCR "\\A\\D", "One", "")), "S_OK");
    const struct {
        const char* key;
        int subkeys;
        int values;
    } rows[] = {{HKCR, 1, 0}, {HKCR "\\A", 2, 0}, {HKCR "\\A\\B", 1, 0}, {HKCR "\\A\\D", 0, 1}};
    for (const auto& row : rows) {
        int subkeys = -1;
        int values = -1;
        EXPECT_EQ(Code(view_->GetCounts(row.key, &subkeys, &values)), "S_OK");
        EXPECT_EQ(subkeys, row.subkeys) << row.key;
        EXPECT_EQ(values, row.values) << row.key;
    }
}

TEST_F(RegistryTest, AMalformedPathANullPointerAndARootsDeletionAreRefused) {
    for (const char* key :
         {"", "A", "HKCR\\A", "\\" HKCR, HKCR "\\", HKCR "\\\\A", HKCR "\\A\\", HKCR "X\\A"}) {
        ASSERT_EQ(Code(view_->Begin()), "S_OK");
        LPCSTR text = nullptr;
        EXPECT_EQ(Code(view_->CreateKey(key)), "E_INVALIDARG") << key;
        EXPECT_EQ(Code(view_->DeleteKey(key)), "E_INVALIDARG") << key;
        EXPECT_EQ(Code(view_->GetValue(key, "", &text)), "E_INVALIDARG") << key;
        ASSERT_EQ(Code(view_->Rollback()), "S_OK");
    }
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->DeleteKey("hkey_classes_root")), "E_INVALIDARG");
    int count = 0;
    EXPECT_EQ(Code(view_->CreateKey(nullptr)), "E_POINTER");
    EXPECT_EQ(Code(view_->SetValue(HKCR, nullptr, "")), "E_POINTER");
    EXPECT_EQ(Code(view_->SetValue(HKCR, "", nullptr)), "E_POINTER");
    EXPECT_EQ(Code(view_->GetValue(HKCR, "", nullptr)), "E_POINTER");
    EXPECT_EQ(Code(view_->GetCounts(HKCR, &count, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(view_->GetSubkey(HKCR, 0, nullptr)), "E_POINTER");
    EXPECT_EQ(Code(LarynthOpenRegistry(nullptr)), "E_POINTER");
}

TEST_F(RegistryTest, OthersSeeATransactionWhenItIsCommittedAndOneThatIsNotNever) {
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    ASSERT_EQ(Code(view_->CreateKey(HKCR "\\A")), "S_OK");
    ASSERT_EQ(Code(view_->SetValue(HKCR "\\A", "", "1")), "S_OK");
    EXPECT_EQ(Value(HKCR "\\A", ""), "REGDB_E_KEYMISSING");
    EXPECT_EQ(Code(view_->Begin()), "E_FAIL");
    ASSERT_EQ(Code(view_->Commit()), "S_OK");
    EXPECT_EQ(Value(HKCR "\\A", ""), "1");

    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    ASSERT_EQ(Code(view_->DeleteKey(HKCR "\\A")), "S_OK");
    EXPECT_EQ(Value(HKCR "\\A", ""), "1");
    ASSERT_EQ(Code(view_->Rollback()), "S_OK");
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    ASSERT_EQ(Code(view_->SetValue(HKCR "\\A", "", "2")), "S_OK");
    view_.Release();
    EXPECT_EQ(Value(HKCR "\\A", ""), "1");
}

TEST_F(RegistryTest, NothingIsWrittenOutsideATransaction) {
    Write({HKCR "\\A"});
    EXPECT_EQ(Code(view_->CreateKey(HKCR "\\B")), "E_FAIL");
    EXPECT_EQ(Code(view_->SetValue(HKCR "\\A", "", "2")), "E_FAIL");
    EXPECT_EQ(Code(view_->DeleteKey(HKCR "\\A")), "E_FAIL");
    EXPECT_EQ(Code(view_->Commit()), "E_FAIL");
    EXPECT_EQ(Code(view_->Rollback()), "E_FAIL");
    EXPECT_EQ(Value(HKCR "\\A", ""), HKCR "\\A");
}

TEST_F(RegistryTest, ReadingCreatesNoFile) {
    const Setting setting("LARYNTH_REGISTRY", (store_.Folder() / "not/there/registry.db").c_str());
    EXPECT_EQ(Value(HKCR "\\A", ""), "REGDB_E_KEYMISSING");
    void* object = &object;
    const CLSID nobodys{1, 2, 3, {}};
    EXPECT_EQ(Code(CoCreateInstance(nobodys, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object)),
              "REGDB_E_CLASSNOTREG");
    EXPECT_TRUE(std::filesystem::is_empty(store_.Folder()));
}

TEST_F(RegistryTest, TheEnvironmentSaysWhereTheStoreIs) {
    const std::string folder = store_.Folder().string();
    const std::string file = folder + "/a/file.db";
    const std::string data = folder + "/data";
    const struct {
        const char* registry;
        const char* data;
        const char* home;
        std::string expected;  // below the folder; empty: no place
    } rows[] = {
        {file.c_str(), data.c_str(), folder.c_str(), "/a/file.db"},
        {nullptr, data.c_str(), folder.c_str(), "/data/larynth/registry.db"},
        {"", data.c_str(), folder.c_str(), "/data/larynth/registry.db"},
        {nullptr, nullptr, folder.c_str(), "/.local/share/larynth/registry.db"},
        {nullptr, "", folder.c_str(), "/.local/share/larynth/registry.db"},
        {nullptr, "relative", folder.c_str(), "/.local/share/larynth/registry.db"},
        {nullptr, nullptr, nullptr, ""},
    };
    for (const auto& row : rows) {
        const Setting registry("LARYNTH_REGISTRY", row.registry);
        const Setting dataHome("XDG_DATA_HOME", row.data);
        const Setting home("HOME", row.home);
        const auto view = TestStore::Open();
        EXPECT_EQ(Value(HKCR, ""), "REGDB_E_KEYMISSING");
        EXPECT_EQ(Code(view->Begin()), row.expected.empty() ? "REGDB_E_WRITEREGDB" : "S_OK") << row.expected;
        if (row.expected.empty()) {
            EXPECT_THAT(LarynthLastError(), HasSubstr("LARYNTH_REGISTRY"));
            continue;
        }
        EXPECT_EQ(Code(view->Commit()), "S_OK");
        EXPECT_EQ(std::filesystem::remove(folder + row.expected), true) << row.expected;
    }
}

TEST_F(RegistryTest, AFileThatIsNoStoreIsRefusedAndLeftAsItIs) {
    const auto makeDatabase = [](const std::filesystem::path& file, const char* sql) {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    };
    const auto text = store_.Folder() / "text.db";
    std::ofstream(text) << "a letter to a friend, longer than the head of a database would be: "
                        << std::string(200, '.');
    const auto foreign = store_.Folder() / "foreign.db";
    makeDatabase(foreign, "CREATE TABLE songs (name)");
    const auto later = store_.Folder() / "later.db";
    makeDatabase(later, "CREATE TABLE keys (x); PRAGMA application_id = 1282570616; PRAGMA user_version = 2");
    const struct {
        std::filesystem::path file;
        const char* reason;
    } rows[] = {{text, "not a database"},
                {foreign, "no registration store"},
                {later, "another version"},
                {store_.Folder(), "unable to open"}};
    for (const auto& row : rows) {
        const Setting setting("LARYNTH_REGISTRY", row.file.c_str());
        const std::string before = ContentOf(row.file);
        const auto view = TestStore::Open();
        EXPECT_EQ(Value(HKCR "\\A", ""), "REGDB_E_READREGDB") << row.file;
        EXPECT_THAT(LarynthLastError(), HasSubstr(row.reason));
        EXPECT_TRUE(FAILED(view->Begin())) << row.file;
        EXPECT_THAT(LarynthLastError(), HasSubstr(row.file.string()));
        EXPECT_EQ(Code(view->CreateKey(HKCR "\\A")), "E_FAIL");
        void* object = nullptr;
        EXPECT_EQ(Code(CoCreateInstance({1, 2, 3, {}}, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object)),
                  "REGDB_E_READREGDB");
        EXPECT_EQ(ContentOf(row.file), before);
        EXPECT_FALSE(std::filesystem::exists(row.file.string() + "-journal"));
    }
}

TEST_F(RegistryTest, AnEmptyFileIsAnEmptyStore) {
    std::ofstream(store_.File()).close();
    EXPECT_EQ(Value(HKCR, ""), "REGDB_E_KEYMISSING");
    Write({HKCR "\\A"});
    EXPECT_EQ(Value(HKCR "\\A", ""), HKCR "\\A");
}

TEST_F(RegistryTest, AFullDiskLosesTheTransactionAndNothingElse) {
    Write({HKCR "\\A"});
    view_.Release();
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{96 * 1024, 96 * 1024};
        setrlimit(RLIMIT_FSIZE, &limit);
        const auto view = TestStore::Open();
        const std::string large(16 * 1024, 'x');
        if (FAILED(view->Begin()) || FAILED(view->DeleteKey(HKCR "\\A"))) _exit(1);
        HRESULT hr = S_OK;
        for (int i = 0; i < 1000 && SUCCEEDED(hr); ++i) {
            const std::string key = HKCR "\\B" + std::to_string(i);
            hr = view->CreateKey(key.c_str());
            if (SUCCEEDED(hr)) hr = view->SetValue(key.c_str(), "", large.c_str());
        }
        // The pages are written when memory for them runs short, or at the latest now.
        if (SUCCEEDED(hr)) hr = view->Commit();
        if (hr != REGDB_E_WRITEREGDB) _exit(2);
        if (SUCCEEDED(view->CreateKey(HKCR "\\C")) && SUCCEEDED(view->Commit())) _exit(3);
        _exit(view->Rollback() == S_OK ? 0 : 4);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(TestStore::Listing(*TestStore::Open().Get(), HKCR), HKCR "\n" HKCR "\\A = " HKCR "\\A\n");
}
