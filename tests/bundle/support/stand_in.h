#pragma once

#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bundle/support/child_run.h"
#include "bundle/support/samples.h"
#include "subtitles/placement.h"

/// Tests that stop a tool in the middle of its work. The system's ffmpeg is replaced by a stand-in
/// of that name that writes a movie made before and then waits to be let go; ffprobe is the
/// real one.
class HeldWork {
  public:
    HeldWork() {
        make_movie_with_subtitles(movie());
        bundle::place_text_track_in(movie(), bundle::subtitle_place(160, 120));
        std::filesystem::create_directory(held_ / "bin");
        std::filesystem::create_symlink(STAND_IN_ENCODER, encoder());
    }

    std::string encoder() const { return held_ / "bin/ffmpeg"; }
    const TemporaryFolder& held() const { return held_; }

    /// What the stand-in writes: a movie with a picture and the tools' subtitles in their place.
    std::string movie() const { return held_ / "movie.mp4"; }
    std::string whole() const { return content_of(movie()); }

    ChildRun::Variables variables() const {
        return {{"VANTREO_FFMPEG", encoder()},
                {"STAND_IN_FOLDER", held_.path().string()},
                {"STAND_IN_FILM", movie()}};
    }
    ChildRun::Variables stubborn_variables() const {
        auto all = variables();
        all.emplace_back("STAND_IN_STUBBORN", "1");
        return all;
    }

    /// Waits until the stand-in is in the middle of its work; its process id, 0 at the deadline.
    pid_t encoder_id() const {
        const std::string id = held_ / "id";
        return eventually([&] { return std::filesystem::exists(id); }) ? std::stoi(content_of(id))
                                                                       : 0;
    }

    void let_go() const { held_.write("go", ""); }

  private:
    TemporaryFolder held_;
};

/// Words that run a command in a process-id namespace of its own, so that "killall" there reaches
/// nothing else.
inline std::vector<std::string> alone(std::vector<std::string> command) {
    std::vector<std::string> words{"unshare", "--pid", "--fork", "--mount-proc"};
    if (::geteuid() != 0) {
        words.insert(words.begin() + 1, "-Ur");
    }
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

/// False where the machine does not allow such namespaces.
inline bool can_be_alone() {
    return ChildRun(alone({"true"})).wait() == 0;
}
