#include "output/private_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <fstream>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

using Names = std::vector<std::string>;

mode_t mode_of(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

class PrivateFileTest : public testing::Test {
  protected:
    MaybeFailure write_and_publish(const std::string& target, const std::string& content) {
        auto file = PrivateFile::create(target);
        if (!file) {
            return file.failure();
        }
        std::ofstream(file->path()) << content;
        return file->publish_whole(stop_);
    }

    TemporaryFolder folder_;
    StopSignals stop_{{}};
};

TEST_F(PrivateFileTest, AppearsUnderItsNameOnlyWhenPublished) {
    auto file = PrivateFile::create(folder_ / "movie.mp4");
    ASSERT_TRUE(file);
    std::ofstream(file->path()) << "MP4 file";
    EXPECT_EQ(folder_.names(), Names{std::filesystem::path(file->path()).filename()});
    EXPECT_FALSE(file->publish_whole(stop_));
    EXPECT_EQ(folder_.names(), Names{"movie.mp4"});
    EXPECT_EQ(content_of(folder_ / "movie.mp4"), "MP4 file");
}

TEST_F(PrivateFileTest, IsRemovedWhenItIsNotPublished) {
    const std::string old = folder_.write("movie.mp4", "old");
    {
        const auto file = PrivateFile::create(old);
        ASSERT_TRUE(file);
        std::ofstream(file->path()) << "half";
    }
    EXPECT_EQ(folder_.names(), Names{"movie.mp4"});
    EXPECT_EQ(content_of(old), "old");
}

TEST_F(PrivateFileTest, ContainsNothingWrittenBeforeItsRenewal) {
    auto file = PrivateFile::create(folder_ / "movie.mp4");
    ASSERT_TRUE(file);
    std::ofstream early(file->path());
    EXPECT_FALSE(file->renew());
    std::ofstream(file->path()) << "new";
    early << "something longer" << std::flush;
    EXPECT_FALSE(file->publish_whole(stop_));
    EXPECT_EQ(folder_.names(), Names{"movie.mp4"});
    EXPECT_EQ(content_of(folder_ / "movie.mp4"), "new");
}

TEST_F(PrivateFileTest, IsNotPublishedEmpty) {
    const std::string old = folder_.write("movie.mp4", "old");
    EXPECT_TRUE(write_and_publish(old, ""));
    EXPECT_EQ(content_of(old), "old");
    EXPECT_EQ(folder_.names(), Names{"movie.mp4"});
}

TEST_F(PrivateFileTest, GetsTheUsualPermissionsOrThoseOfTheOldFile) {
    const mode_t before = ::umask(027);
    EXPECT_FALSE(write_and_publish(folder_ / "new.mp4", "MP4 file"));
    ::umask(before);
    EXPECT_EQ(mode_of(folder_ / "new.mp4"), 0640U);
    const std::string old = folder_.write("old.mp4", "old");
    ::chmod(old.c_str(), 0604);
    EXPECT_FALSE(write_and_publish(old, "MP4 file"));
    EXPECT_EQ(mode_of(old), 0604U);
}

TEST_F(PrivateFileTest, TakesTheLongestNameOfATarget) {
    const std::string name = std::string(251, 'n') + ".mp4";
    EXPECT_FALSE(write_and_publish(folder_ / name, "MP4 file"));
    EXPECT_EQ(folder_.names(), Names{name});
}

TEST_F(PrivateFileTest, RemovesStaleFilesButNoOthers) {
    folder_.write(".vantreo-abcdef.part", "stale");
    folder_.write(".vantreo-abcdefg.part", "another name");
    folder_.write("vantreo-abcdef.part", "another name");
    std::filesystem::create_symlink(folder_.write("kept", "kept"),
                                    folder_ / ".vantreo-linked.part");
    std::filesystem::create_directory(folder_ / ".vantreo-folder.part");
    const std::string busy = folder_.write(".vantreo-locked.part", "in use");
    const UniqueFd lock(::open(busy.c_str(), O_RDWR));
    ASSERT_EQ(::flock(lock.get(), LOCK_EX), 0);
    { const auto file = PrivateFile::create(folder_ / "movie.mp4"); }
    EXPECT_EQ(folder_.names(),
              (Names{".vantreo-abcdefg.part", ".vantreo-folder.part", ".vantreo-linked.part",
                     ".vantreo-locked.part", "kept", "vantreo-abcdef.part"}));
}

TEST_F(PrivateFileTest, IsLockedAgainstTheSweepOfAnotherRun) {
    auto one = PrivateFile::create(folder_ / "movie.mp4");
    const auto other = PrivateFile::create(folder_ / "movie.mp4");
    ASSERT_TRUE(one && other);
    EXPECT_TRUE(std::filesystem::exists(one->path()));
    EXPECT_NE(one->path(), other->path());
}

TEST_F(PrivateFileTest, IsNotMadeForAFolderOrInAMissingOne) {
    EXPECT_FALSE(PrivateFile::create(folder_.path().string()));
    EXPECT_FALSE(PrivateFile::create(folder_ / "missing/movie.mp4"));
}

}  // namespace
}  // namespace bundle
