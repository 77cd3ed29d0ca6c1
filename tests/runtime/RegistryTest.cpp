// SPDX-License-Identifier: MIT
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <larynth/Registry.h>

#include "tests/support/BadPointer.h"
#include "tests/support/Code.h"
#include "tests/support/Content.h"
#include "tests/support/TestStore.h"

namespace {

using testing::HasSubstr;

#define HKCR "HKEY_CLASSES_ROOT"

class Registry : public testing::Test {
  protected:
    /// Creates keys, each with its path as default value.
    static void Write(std::initializer_list<const char*> keys) {
        for (const char* key : keys) TestStore::Write(key, key);
    }

    TestStore store_;
    ComPtr<ILarynthRegistry> view_ = TestStore::Open();
};

}  // namespace

TEST_F(Registry, NamesCompareWithoutCaseAndKeepTheirFirstSpelling) {
    Write({HKCR "\\Larynth\\Voice"});
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->CreateKey("hkey_classes_root\\LARYNTH\\voice")), "S_OK");
    EXPECT_EQ(Code(view_->SetValue(HKCR "\\larynth\\VOICE", "Model", "both")), "S_OK");
    EXPECT_EQ(Code(view_->SetValue(HKCR "\\larynth\\VOICE", "MODEL", "caf\u00e9")), "S_OK");
    ASSERT_EQ(Code(view_->Commit()), "S_OK");
    EXPECT_EQ(TestStore::Value("HKEY_Classes_Root\\LARYNTH\\Voice", "mOdEl"), "caf\u00e9");
    EXPECT_EQ(TestStore::Listing(*view_.Get(), HKCR),
              HKCR "\n" HKCR "\\Larynth\n" HKCR "\\Larynth\\Voice = " HKCR "\\Larynth\\Voice + 1\n");
}

TEST_F(Registry, WhatIsNotThereIsSaidToBeMissing) {
    Write({HKCR "\\A"});
    LPCSTR text = nullptr;
    int count = 0;
    EXPECT_EQ(TestStore::Value(HKCR "\\B"), "REGDB_E_KEYMISSING");
    EXPECT_EQ(TestStore::Value(HKCR "\\A", "Name"), "REGDB_E_KEYMISSING");
    EXPECT_EQ(Code(view_->GetCounts(HKCR "\\B", &count, &count)), "REGDB_E_KEYMISSING");
    EXPECT_EQ(Code(view_->GetSubkey(HKCR, -1, &text)), "REGDB_E_KEYMISSING");
    EXPECT_EQ(Code(view_->GetSubkey(HKCR, 1, &text)), "REGDB_E_KEYMISSING");
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->SetValue(HKCR "\\B", "", "")), "REGDB_E_KEYMISSING");
    EXPECT_EQ(Code(view_->DeleteKey(HKCR "\\B")), "S_FALSE");
}

TEST_F(Registry, DeletingAKeyTakesWhatIsBelowItAndNothingBesideIt) {
    Write({HKCR "\\A", HKCR "\\A\\B", HKCR "\\A\\B\\C", HKCR "\\a\\z", HKCR "\\A]", HKCR "\\A]\\D",
           HKCR "\\AB", HKCR "\\A B", HKCR "\\A[", "HKEY_USERS\\A"});
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->DeleteKey(HKCR "\\a")), "S_OK");
    EXPECT_EQ(TestStore::Listing(*view_.Get(), HKCR),
              HKCR "\n" HKCR "\\A B = " HKCR "\\A B\n" HKCR "\\A[ = " HKCR "\\A[\n" HKCR "\\A] = " HKCR
                   "\\A]\n" HKCR "\\A]\\D = " HKCR "\\A]\\D\n" HKCR "\\AB = " HKCR "\\AB\n");
    EXPECT_EQ(TestStore::Value("HKEY_USERS\\A"), "HKEY_USERS\\A");
}

TEST_F(Registry, AMalformedPathABadPointerAndARootsDeletionAreRefused) {
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    for (const char* key : {"", "A", "HKCR\\A", "\\" HKCR, HKCR "\\", HKCR "\\\\A", HKCR "X\\A"}) {
        EXPECT_EQ(Code(view_->CreateKey(key)), "E_INVALIDARG") << key;
        EXPECT_EQ(TestStore::Value(key), "E_INVALIDARG") << key;
    }
    EXPECT_EQ(Code(view_->DeleteKey("hkey_classes_root")), "E_INVALIDARG");
    int count = 0;
    EXPECT_EQ(Code(view_->GetCounts(HKCR, nullptr, &count)), "E_POINTER");
    EXPECT_EQ(Code(view_->GetSubkey(HKCR, 0, ReadOnly<LPCSTR>())), "E_POINTER");
    EXPECT_EQ(Code(view_->QueryInterface(IID_IUnknown, ReadOnly<void*>())), "E_POINTER");
    EXPECT_EQ(Code(view_->SetValue(HKCR, "", nullptr)), "E_POINTER");
}

TEST_F(Registry, OthersSeeATransactionWhenItIsCommittedAndOneThatIsNotNever) {
    Write({HKCR "\\A"});
    EXPECT_EQ(Code(view_->CreateKey(HKCR "\\B")), "E_FAIL") << "outside a transaction";
    EXPECT_EQ(Code(view_->Commit()), "E_FAIL");
    ASSERT_EQ(Code(view_->Begin()), "S_OK");
    EXPECT_EQ(Code(view_->Begin()), "E_FAIL");
    ASSERT_EQ(Code(view_->SetValue(HKCR "\\A", "", "1")), "S_OK");
    EXPECT_EQ(TestStore::Value(HKCR "\\A"), HKCR "\\A");
    ASSERT_EQ(Code(view_->Commit()), "S_OK");
    EXPECT_EQ(TestStore::Value(HKCR "\\A"), "1");
    for (const bool released : {false, true}) {
        ASSERT_EQ(Code(view_->Begin()), "S_OK");
        ASSERT_EQ(Code(view_->DeleteKey(HKCR "\\A")), "S_OK");
        released ? view_.Release() : static_cast<void>(view_->Rollback());
        EXPECT_EQ(TestStore::Value(HKCR "\\A"), "1") << released;
    }
}

TEST_F(Registry, TheEnvironmentSaysWhereTheStoreIsAndReadingCreatesNone) {
    const std::string folder = store_.Folder().string();
    const std::string file = folder + "/a/file.db", data = folder + "/data";
    const struct {
        const char *registry, *data, *home, *expected;  // the last below the folder
    } rows[] = {
        {file.c_str(), data.c_str(), folder.c_str(), "/a/file.db"},
        {"", data.c_str(), folder.c_str(), "/data/larynth/registry.db"},
        {nullptr, "relative", folder.c_str(), "/.local/share/larynth/registry.db"},
        {nullptr, nullptr, nullptr, nullptr},
        {"file.db", data.c_str(), folder.c_str(), nullptr},
    };
    for (const auto& row : rows) {
        const Setting registry("LARYNTH_REGISTRY", row.registry);
        const Setting dataHome("XDG_DATA_HOME", row.data), home("HOME", row.home);
        const auto view = TestStore::Open();
        const bool relative = row.registry != nullptr && row.registry[0] == 'f';
        EXPECT_EQ(TestStore::Value(HKCR), relative ? "REGDB_E_READREGDB" : "REGDB_E_KEYMISSING");
        EXPECT_TRUE(std::filesystem::is_empty(folder));
        if (row.expected == nullptr) {
            EXPECT_EQ(Code(view->Begin()), "REGDB_E_WRITEREGDB");
            EXPECT_THAT(LarynthLastError(), HasSubstr(relative ? "absolute path" : "LARYNTH_REGISTRY"));
            continue;
        }
        EXPECT_EQ(Code(view->Begin()), "S_OK") << row.expected;
        EXPECT_EQ(Code(view->Commit()), "S_OK");
        const std::filesystem::path made = folder + row.expected;
        EXPECT_EQ(status(made).permissions(), std::filesystem::perms{0600}) << made;
        EXPECT_EQ(status(made.parent_path()).permissions(), std::filesystem::perms{0700}) << made;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) remove_all(entry);
    }
}

TEST_F(Registry, AFileThatIsNoStoreIsRefusedAndLeftAsItIs) {
    std::ofstream(store_.File()).close();
    EXPECT_EQ(TestStore::Value(HKCR), "REGDB_E_KEYMISSING") << "an empty file is an empty store";
    Write({HKCR "\\A"});
    const struct {
        const char *file, *value, *reason;
    } rows[] = {
        {"foreign.db", "REGDB_E_READREGDB", "no registration store"},
        {"later.db", "REGDB_E_READREGDB", "another version of this program; move the file away and register"},
        {"trigger.db", "REGDB_E_READREGDB",
         "other tables; the registration store is damaged; move the file away"},
        {"damaged.db", "v", "the registration store is damaged; move the file away"},  // not where it is read
    };
    for (const auto& row : rows) {
        const auto file = store_.Folder() / row.file;
        copy_file(LARYNTH_CORPUS / file.filename(), file);
        chmod(file.c_str(), 0600);
        const Setting setting("LARYNTH_REGISTRY", file.c_str());
        const std::string before = ContentOf(file);
        const auto view = TestStore::Open();
        EXPECT_EQ(TestStore::Value(HKCR), row.value) << file;
        EXPECT_TRUE(FAILED(view->Begin())) << file;
        EXPECT_THAT(LarynthLastError(), testing::AllOf(HasSubstr(file.string()), HasSubstr(row.reason)));
        EXPECT_EQ(ContentOf(file), before);
    }
}

TEST_F(Registry, OneThatOthersCanChangeIsNotUsed) {
    constexpr char kOthers[] = "others than its owner may write", kForeign[] = "belongs to another user";
    const uid_t mine = geteuid(), nobodys = 65534;
    const struct {
        unsigned folder, file;
        uid_t foldersOwner, filesOwner;
        const char* reason;  // empty where it is used
    } rows[] = {
        {0700, 0600, mine, mine, ""},          {0755, 0644, mine, mine, ""},
        {0770, 0600, mine, mine, kOthers},     {0702, 0600, mine, mine, kOthers},
        {01777, 0600, mine, mine, kOthers},    {0700, 0620, mine, mine, kOthers},
        {0700, 0602, mine, mine, kOthers},     {0700, 0600, nobodys, mine, kForeign},
        {0700, 0600, mine, nobodys, kForeign},
    };
    Write({HKCR "\\A"});
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        if (row.reason == kForeign && mine != 0) continue;  // only root gives files away
        const std::pair<std::filesystem::path, std::pair<unsigned, uid_t>> changes[] = {
            {store_.Folder(), {row.folder, row.foldersOwner}}, {store_.File(), {row.file, row.filesOwner}}};
        for (const auto& [path, change] : changes) {
            ASSERT_EQ(chown(path.c_str(), change.second, static_cast<gid_t>(-1)), 0);
            ASSERT_EQ(chmod(path.c_str(), change.first), 0);
        }
        const bool used = *row.reason == '\0';
        EXPECT_EQ(TestStore::Value(HKCR "\\A"), used ? HKCR "\\A" : "REGDB_E_READREGDB");
        const auto view = TestStore::Open();
        EXPECT_EQ(Code(view->Begin()), used ? "S_OK" : "REGDB_E_WRITEREGDB");
        EXPECT_THAT(LarynthLastError(), HasSubstr(row.reason));
    }
}

TEST_F(Registry, AReaderGivesUpWhenAnotherProcessKeepsTheLock) {
    Write({HKCR "\\A"});
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(store_.File().c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(TestStore::Value(HKCR "\\A"), "REGDB_E_READREGDB");
    EXPECT_THAT(LarynthLastError(), HasSubstr("another process is writing"));
    sqlite3_close(other);
}
