#include "input/dialog_folders.h"

#include <gtest/gtest.h>
#include <wx/filename.h>
#include <wx/utils.h>

#include <filesystem>
#include <map>

#include "support/folder.h"

namespace {

namespace fs = std::filesystem;

/// A user with a home folder, and the program running in its own folder.
class DialogFolders : public testing::Test {
  protected:
    DialogFolders() {
        for (const wxString name : {"HOME", "XDG_CONFIG_HOME"})
            wxGetEnv(name, &before[name]);
        wxSetEnv("HOME", home.path());
        wxSetEnv("XDG_CONFIG_HOME", home.path());
        fs::create_directory(program.file("inside").utf8_string());
        fs::current_path(program.path().utf8_string());
    }
    ~DialogFolders() override {
        fs::current_path("/");
        for (const auto& [name, value] : before)
            wxSetEnv(name, value);
    }

    /// Creates the Videos folder and returns its path.
    wxString make_videos() const {
        const wxString videos = home.file(L"Vid\u00e9os");
        fs::create_directory(videos.utf8_string());
        home.write("user-dirs.dirs", L"XDG_VIDEOS_DIR=\"$HOME/Vid\u00e9os\"\n");
        return videos;
    }

    Folder home;
    Folder program;
    Folder other;
    std::map<wxString, wxString> before;
};

}  // namespace

TEST_F(DialogFolders, OfMoviesAreFirstVideosThenHomeThenTheRoot) {
    EXPECT_EQ(movie_dialog_folder(""), home.path());
    const wxString videos = make_videos();
    EXPECT_EQ(movie_dialog_folder(""), videos);
    fs::remove(videos.utf8_string());
    EXPECT_EQ(movie_dialog_folder(""), home.path());
    wxSetEnv("HOME", "/no/such/folder");
    EXPECT_EQ(movie_dialog_folder(""), "/");
    wxSetEnv("HOME", "inside");
    EXPECT_EQ(movie_dialog_folder(""), "/");
}

TEST_F(DialogFolders, OfMoviesAreTheLastOneWhileItExists) {
    const wxString videos = make_videos();
    EXPECT_EQ(movie_dialog_folder(other.path()), other.path());
    EXPECT_EQ(movie_dialog_folder(other.file("gone")), videos);
}

TEST_F(DialogFolders, OfTheOutputAreTheSavedOneOrTheNearestAbove) {
    EXPECT_EQ(output_dialog_folder(other.path()), other.path());
    EXPECT_EQ(output_dialog_folder(other.file("gone")), other.path());
    EXPECT_EQ(output_dialog_folder(other.file("gone/further/")), other.path());
    EXPECT_EQ(output_dialog_folder(other.write("file")), other.path());
}

TEST_F(DialogFolders, AreNeverTheProgramsOwn) {
    for (const wxString saved : {"", ".", "inside", "./inside", "gone", "../..", "~", "~/inside"})
        EXPECT_EQ(output_dialog_folder(saved), home.path()) << saved;
    EXPECT_EQ(output_dialog_folder("/no/such/folder"), home.path());
    EXPECT_EQ(movie_dialog_folder("inside"), home.path());
}
