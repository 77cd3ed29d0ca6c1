// SPDX-License-Identifier: MIT
#include <filesystem>
#include <gmock/gmock.h>
#include <string>

#include "tests/host/CommandFolder.h"

namespace larynth::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;

constexpr char kLarynth[] = LARYNTH_MODULE_DIR "/Larynth.so";
constexpr char kCompanion[] = LARYNTH_MODULE_DIR "/LarynthCompanion.so";

class RegistrationCommandTest : public testing::Test {
  protected:
    /// A command line with a registration store in its folder.
    CommandResult Run(const std::string& line) const {
        return folder_.Run("export LARYNTH_REGISTRY=store.db; " + line);
    }

    /// How many of the lines of `larynth classes` begin so.
    long CountClasses(const char* beginning) const {
        return std::stol(Run(std::string("larynth classes | grep -c '^") + beginning + "'").out);
    }

    CommandFolder folder_;
};

}  // namespace

TEST_F(RegistrationCommandTest, WithoutArgumentsTheOwnModulesAreRegisteredAndUnregistered) {
    CommandResult result = Run("larynth register");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, std::string("registered ") + kLarynth + "\nregistered " + kCompanion + "\n");
    EXPECT_EQ(CountClasses("store"), 16);
    result = Run("larynth unregister");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, std::string("unregistered ") + kLarynth + "\nunregistered " + kCompanion + "\n");
    EXPECT_EQ(CountClasses("store"), 0);
}

TEST_F(RegistrationCommandTest, AnyModuleCanBeNamed) {
    std::filesystem::copy_file(kCompanion, folder_.Path("other.so"));
    CommandResult result = Run("larynth register ./other.so");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "registered ./other.so\n");
    EXPECT_EQ(CountClasses("store .*TTSVoice Class .* both  .*/other.so$"), 1);
    EXPECT_EQ(Run("larynth unregister other.so").status, 0);
    EXPECT_EQ(CountClasses("store"), 0);
}

TEST_F(RegistrationCommandTest, ClassesAreListedWithTheirSource) {
    const CommandResult before = Run("larynth classes");
    EXPECT_EQ(before.status, 0) << before.err;
    EXPECT_THAT(before.out, MatchesRegex("source  class +ProgID +description +threading  module\n(.*\n)*"));
    EXPECT_THAT(before.out,
                HasSubstr("loaded  {7856881E-0461-4F9D-8693-3030B63798FA}  Larynth.Larynth.1                 "
                          "Larynth Class                 both       " +
                          std::string(kLarynth) + "\n"));
    EXPECT_EQ(CountClasses("loaded"), 16);
    EXPECT_EQ(CountClasses("store"), 0);
    EXPECT_THAT(folder_.Names(), testing::IsEmpty()) << "looking creates no store";
}

TEST_F(RegistrationCommandTest, BadArgumentsExitWithTwoAndNothingIsStored) {
    folder_.Write("text.so", "no module");
    const struct {
        const char* line;
        const char* message;
    } rows[] = {
        {"larynth register none.so", "none.so: expected a module, found no such file"},
        {"larynth unregister none.so", "none.so: expected a module, found no such file"},
        {"larynth register .", ".: expected a module, found no regular file"},
        {"larynth register text.so", "expected a component module: "},
        {"larynth register \"$(command -v larynth)\"", "expected a component module: "},
        {"larynth register --all", "--all"},
        {"larynth classes more", "more"},
    };
    for (const auto& row : rows) {
        const CommandResult result = Run(row.line);
        EXPECT_EQ(result.status, 2) << row.line << result.err;
        EXPECT_THAT(result.err, AllOf(HasSubstr("larynth: "), HasSubstr(row.message))) << row.line;
        EXPECT_EQ(result.out, "") << row.line;
    }
    const std::string companion = kCompanion;
    EXPECT_EQ(Run("larynth register " + companion + " none.so").status, 2);
    EXPECT_FALSE(std::filesystem::exists(folder_.Path("store.db")));
}

TEST_F(RegistrationCommandTest, AStoreThatIsNoneExitsWithOneAndIsNamed) {
    folder_.Write("store.db", "a letter to a friend");
    for (const char* deed : {"register", "unregister", "classes"}) {
        const CommandResult result = Run(std::string("larynth ") + deed);
        EXPECT_EQ(result.status, 1) << deed;
        EXPECT_THAT(result.err, HasSubstr("store.db: file is not a database")) << deed;
        EXPECT_EQ(result.out, "") << deed;
    }
    EXPECT_EQ(folder_.Read("store.db"), "a letter to a friend");
}

TEST_F(RegistrationCommandTest, AFullDiskExitsWithOneAndTheStoreKeepsWhatItHad) {
    std::filesystem::copy_file(kCompanion, folder_.Path("other.so"));
    ASSERT_EQ(Run("larynth register other.so").status, 0);
    const CommandResult result = Run("(ulimit -f 1; larynth register)");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("cannot be registered"));
    EXPECT_EQ(CountClasses("store .*/other.so$"), 4);
    EXPECT_EQ(CountClasses("store"), 4);
    EXPECT_EQ(Run("larynth register > /dev/full").status, 1);
}

}  // namespace larynth::test
