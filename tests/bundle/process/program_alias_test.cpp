#include "process/program_alias.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

class ProgramAlias : public testing::Test {
  protected:
    ProgramAlias() {
        ::setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
        ::setenv("TMPDIR", folder_.path().c_str(), 1);
    }
    ~ProgramAlias() override {
        ::unsetenv("XDG_RUNTIME_DIR");
        ::unsetenv("TMPDIR");
    }

    TemporaryFolder folder_;
};

TEST_F(ProgramAlias, IsALinkToTheProgramInTheSessionsFolder) {
    const std::string path = path_of_alias("/bin/true", "alias");
    EXPECT_TRUE(path.starts_with(folder_ / "vantreo/")) << path;
    EXPECT_TRUE(path.ends_with("/alias")) << path;
    EXPECT_EQ(std::filesystem::read_symlink(path), "/bin/true");
}

TEST_F(ProgramAlias, IsTheSameLinkNextTimeAndAnotherOneForAnotherProgram) {
    const std::string path = path_of_alias("/bin/true", "alias");
    EXPECT_NE(path_of_alias("/bin/false", "alias"), path);
    EXPECT_EQ(path_of_alias("/bin/true", "alias"), path);
    EXPECT_EQ(std::filesystem::read_symlink(path), "/bin/true");
}

TEST_F(ProgramAlias, IsAmongTheTemporaryFilesWhereItsPlaceIsTaken) {
    const std::string path = path_of_alias("/bin/true", "alias");
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    const std::string other = path_of_alias("/bin/true", "alias");
    EXPECT_TRUE(other.starts_with(folder_ / "vantreo-")) << other;
    EXPECT_TRUE(other.ends_with("/alias")) << other;
    EXPECT_EQ(std::filesystem::read_symlink(other), "/bin/true");
}

TEST_F(ProgramAlias, IsAmongTheTemporaryFilesWhereTheSessionIsSomebodyElses) {
    folder_.write("file", "");
    ::setenv("XDG_RUNTIME_DIR", (folder_ / "file").c_str(), 1);
    const std::string path = path_of_alias("/bin/true", "alias");
    EXPECT_TRUE(path.starts_with(folder_ / "vantreo-")) << path;
    EXPECT_EQ(std::filesystem::read_symlink(path), "/bin/true");
}

TEST_F(ProgramAlias, IsTheProgramItselfWhereNoLinkCanBeMade) {
    folder_.write("file", "");
    for (const char* name : {"XDG_RUNTIME_DIR", "TMPDIR"}) {
        ::setenv(name, (folder_ / "file").c_str(), 1);
    }
    EXPECT_EQ(path_of_alias("/bin/true", "alias"), "/bin/true");
}

}  // namespace
}  // namespace bundle
