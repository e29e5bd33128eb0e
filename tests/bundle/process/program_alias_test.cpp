#include "process/program_alias.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

class ProgramAliasTest : public testing::Test {
  protected:
    ProgramAliasTest() { ::setenv("TMPDIR", folder_.path().c_str(), 1); }
    ~ProgramAliasTest() override {
        if (before_) {
            ::setenv("TMPDIR", before_->c_str(), 1);
        } else {
            ::unsetenv("TMPDIR");
        }
    }

    /// A link as a killed run leaves it.
    std::filesystem::path leave(const std::string& folder) const {
        std::filesystem::create_directory(folder_ / folder);
        std::filesystem::create_symlink("/bin/true", folder_ / folder + "/alias");
        return folder_ / folder;
    }

    std::optional<std::string> before_ =
        std::getenv("TMPDIR") == nullptr ? std::nullopt : std::optional(std::getenv("TMPDIR"));
    TemporaryFolder folder_;
};

TEST_F(ProgramAliasTest, IsALinkToTheProgramUntilItsEnd) {
    {
        const auto alias = ProgramAlias::create("/bin/true", "alias");
        ASSERT_TRUE(alias);
        EXPECT_TRUE(alias->path().ends_with("/alias"));
        EXPECT_EQ(std::filesystem::read_symlink(alias->path()), "/bin/true");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(ProgramAliasTest, IsTheProgramItselfWithoutAName) {
    const auto stale = leave("vantreo-alias-abcdef");
    const auto alias = ProgramAlias::create("/bin/true", "");
    ASSERT_TRUE(alias);
    EXPECT_EQ(alias->path(), "/bin/true");
    EXPECT_TRUE(std::filesystem::exists(stale));
}

TEST_F(ProgramAliasTest, SweepsWhatAKilledRunHasLeft) {
    const auto stale = leave("vantreo-alias-abcdef");
    std::filesystem::create_directory(folder_ / "vantreo-alias-uvwxyz");
    const auto alias = ProgramAlias::create("/bin/true", "alias");
    EXPECT_FALSE(std::filesystem::exists(stale));
    EXPECT_EQ(folder_.names().size(), 1U);
}

TEST_F(ProgramAliasTest, SweepsNothingElse) {
    const auto running = ProgramAlias::create("/bin/true", "alias");
    const auto longer = leave("vantreo-alias-abcdefg");
    const auto other = leave("alias-abcdef");
    const auto with_more = leave("vantreo-alias-uvwxyz");
    folder_.write("vantreo-alias-uvwxyz/more", "a user's own");
    std::filesystem::create_directory(folder_ / "vantreo-alias-UVWXYZ");
    folder_.write("vantreo-alias-UVWXYZ/alias", "a user's own");
    const auto next = ProgramAlias::create("/bin/true", "alias");
    for (const auto& kept : {std::filesystem::path(running->path()), longer, other, with_more,
                             std::filesystem::path(folder_ / "vantreo-alias-UVWXYZ/alias")}) {
        EXPECT_TRUE(std::filesystem::exists(kept)) << kept;
    }
}

TEST_F(ProgramAliasTest, SweepsNothingOfOtherUsers) {
    constexpr uid_t kOther = 12345;
    const auto others = leave("vantreo-alias-abcdef");
    if (::chown(others.c_str(), kOther, kOther) != 0) {
        GTEST_SKIP() << "only root can make a folder of another user";
    }
    const auto alias = ProgramAlias::create("/bin/true", "alias");
    EXPECT_TRUE(std::filesystem::is_symlink(others / "alias"));
}

}  // namespace
}  // namespace bundle
