#include "movie/probe_memory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>

#include "support/temporary_folder.h"

namespace bundle {
namespace {

namespace fs = std::filesystem;

class ProbeMemory : public testing::Test {
  protected:
    ProbeMemory() : movie_(folder_.write("movie.avi", "a movie")) {
        ::setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
    }
    ~ProbeMemory() override { ::unsetenv("XDG_RUNTIME_DIR"); }

    /// Until the movie is old enough to be kept: only the system sets the time that counts.
    void let_movie_age() {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        struct stat status {};
        ASSERT_EQ(::stat(movie_.c_str(), &status), 0);
        while (::time(nullptr) - status.st_ctim.tv_sec < 2 &&
               std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }

    const TemporaryFolder folder_;
    const std::string movie_;
    const nlohmann::json answer_{{"streams", {1, 2}}};
};

TEST_F(ProbeMemory, KeepsAnAnswerForOneQuestion) {
    let_movie_age();
    remember_probe(movie_, answer_);
    EXPECT_EQ(recall_probe(movie_), answer_);
    EXPECT_EQ(recall_probe(movie_), std::nullopt);
}

TEST_F(ProbeMemory, DoesNotKnowAFileThatHasChanged) {
    let_movie_age();
    remember_probe(movie_, answer_);
    std::ofstream(movie_) << "a f1lm";
    EXPECT_EQ(recall_probe(movie_), std::nullopt);
    let_movie_age();
    EXPECT_EQ(recall_probe(movie_), std::nullopt);
}

TEST_F(ProbeMemory, KeepsNothingAboutAFileThatHasJustChanged) {
    remember_probe(movie_, answer_);
    let_movie_age();
    EXPECT_EQ(recall_probe(movie_), std::nullopt);
}

TEST_F(ProbeMemory, KeepsNothingWithoutAFolderOfTheSession) {
    let_movie_age();
    ::unsetenv("XDG_RUNTIME_DIR");
    remember_probe(movie_, answer_);
    EXPECT_EQ(recall_probe(movie_), std::nullopt);
    EXPECT_FALSE(fs::exists(folder_ / "vantreo"));
}

TEST_F(ProbeMemory, TakesNoBrokenAnswer) {
    let_movie_age();
    remember_probe(movie_, answer_);
    for (const auto& kept : fs::directory_iterator(folder_ / "vantreo")) {
        fs::resize_file(kept, fs::file_size(kept) / 2);
    }
    EXPECT_EQ(recall_probe(movie_), std::nullopt);
}

TEST_F(ProbeMemory, ForgetsWhatNobodyAskedForWithinAnHour) {
    let_movie_age();
    remember_probe(movie_, answer_);
    const auto long_ago = fs::file_time_type::clock::now() - std::chrono::hours(2);
    for (const auto& kept : fs::directory_iterator(folder_ / "vantreo")) {
        fs::last_write_time(kept, long_ago);
    }
    remember_probe("/usr/bin/env", answer_);
    EXPECT_EQ(recall_probe(movie_), std::nullopt);
}

}  // namespace
}  // namespace bundle
