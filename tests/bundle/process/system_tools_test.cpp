#include "process/system_tools.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "bundle/support/child_run.h"
#include "support/temporary_folder.h"

namespace bundle {
namespace {

constexpr const char* kVariable = "VANTREO_TEST_TOOL";

class SystemToolsTest : public testing::Test {
  protected:
    SystemToolsTest() {
        std::filesystem::create_directory(folder_ / "one");
        std::filesystem::create_directory(folder_ / "two");
        set_path(folder_ / "one" + ":" + folder_ / "two");
    }
    ~SystemToolsTest() override {
        ::unsetenv(kVariable);
        set_path(path_before_);
    }

    static void set_path(const std::string& path) { ::setenv("PATH", path.c_str(), 1); }

    std::string make_tool(const std::string& name) const {
        std::string path = folder_.write(name, "#!/bin/sh\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }

    static std::string found() {
        const auto tool = find_system_tool("tool", kVariable);
        return tool ? *tool : "";
    }

    const std::string path_before_ = std::getenv("PATH");
    TemporaryFolder folder_;
};

TEST_F(SystemToolsTest, AreTheFirstOnPath) {
    const std::string second = make_tool("two/tool");
    EXPECT_EQ(found(), second);
    const std::string first = make_tool("one/tool");
    EXPECT_EQ(found(), first);
}

TEST_F(SystemToolsTest, MustBeExecutableFiles) {
    folder_.write("one/tool", "no permission to run");
    const std::string second = make_tool("two/tool");
    EXPECT_EQ(found(), second);
    std::filesystem::remove(folder_ / "one/tool");
    std::filesystem::create_directory(folder_ / "one/tool");
    EXPECT_EQ(found(), second);
}

TEST_F(SystemToolsTest, AreNeverSearchedInTheCurrentFolder) {
    make_tool("one/tool");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder_ / "one");
    set_path("::.:./:../one");
    EXPECT_EQ(found(), "");
    std::filesystem::current_path(before);
}

TEST_F(SystemToolsTest, AreNeverThisProgram) {
    const auto self = std::filesystem::read_symlink("/proc/self/exe");
    std::filesystem::create_symlink(self, folder_ / "one/tool");
    EXPECT_EQ(found(), "");
    const std::string second = make_tool("two/tool");
    EXPECT_EQ(found(), second);
}

TEST_F(SystemToolsTest, MayBeNamedByAVariable) {
    make_tool("one/tool");
    const std::string named = make_tool("another");
    ::setenv(kVariable, named.c_str(), 1);
    EXPECT_EQ(found(), named);
    ::setenv(kVariable, "", 1);
    EXPECT_EQ(found(), folder_ / "one/tool");
}

TEST_F(SystemToolsTest, AreNotReplacedWhenTheVariableIsWrong) {
    make_tool("one/tool");
    for (const char* wrong : {"tool", "one/tool", "/missing/tool", "/"}) {
        ::setenv(kVariable, wrong, 1);
        EXPECT_EQ(found(), "") << wrong;
    }
}

TEST_F(SystemToolsTest, AreNamedWhenMissing) {
    const auto tool = find_system_tool("tool", kVariable);
    ASSERT_FALSE(tool);
    EXPECT_NE(tool.failure().message.find("the system's tool is missing"), std::string::npos);
    EXPECT_NE(tool.failure().message.find(kVariable), std::string::npos);
}

TEST_F(SystemToolsTest, AreNeverTheNeighbourInTheBundle) {
    std::filesystem::create_symlink(TOOL_MP4BOX, folder_ / "one/ffprobe");
    std::filesystem::create_symlink(TOOL_FFMPEG, folder_ / "two/ffprobe");
    ChildRun tool({TOOL_FFMPEG, "-i", folder_.write("movie.avi", "movie")});
    EXPECT_EQ(tool.wait(), 1);
    EXPECT_NE(tool.errors().find("the system's ffprobe is missing"), std::string::npos);
}

}  // namespace
}  // namespace bundle
