// Adding and removing movies, and selecting the output folder.

#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/listbox.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>

#include "input/DnDtextMovies.h"
#include "input/DnDtextOutput.h"
#include "support/frame_test.h"

namespace {

class Selection : public FrameTest {
  protected:
    bool drop_movies(const wxArrayString& paths) {
        return DnDtextMovies(frame, frame->textMovies).OnDropFiles(1, 1, paths);
    }

    bool drop_output(const wxArrayString& paths) {
        return DnDtextOutput(frame->textOutput).OnDropFiles(1, 1, paths);
    }

    static wxArrayString paths(std::initializer_list<wxString> list) {
        wxArrayString result;
        for (const wxString& path : list)
            result.Add(path);
        return result;
    }

    wxArrayString listed() const { return frame->textMovies->GetStrings(); }

    /// Presses a key in the list; true when the list itself may handle it too.
    bool key(int code) {
        wxKeyEvent event(wxEVT_KEY_DOWN);
        event.m_keyCode = code;
        event.SetEventObject(frame->textMovies);
        return !frame->textMovies->GetEventHandler()->ProcessEvent(event);
    }

    void double_click(wxWindow* control) {
        wxMouseEvent event(wxEVT_LEFT_DCLICK);
        event.SetEventObject(control);
        control->GetEventHandler()->ProcessEvent(event);
    }
};

}  // namespace

TEST_F(Selection, AddsDroppedFilesOnce) {
    start();
    EXPECT_TRUE(drop_movies(paths({"/m/b.avi", "/m/a.avi", "/m/b.avi"})));
    EXPECT_TRUE(drop_movies(paths({"/m/A.AVI", "/m/folder", "/m/text.txt"})));
    EXPECT_EQ(listed(), paths({"/m/b.avi", "/m/a.avi", "/m/folder", "/m/text.txt"}));
}

TEST_F(Selection, AddsFiveThousandFilesWithinASecond) {
    start();
    wxArrayString many;
    for (int i = 0; i < 5000; ++i)
        many.Add(wxString::Format("/movies/a folder of movies/movie number %i.avi", i));
    const wxStopWatch watch;
    drop_movies(many);
    run_pending_events();
    EXPECT_LT(watch.Time(), 1000);
    EXPECT_EQ(listed(), many);
    drop_movies(many);
    EXPECT_EQ(frame->textMovies->GetCount(), 5000U);
}

TEST_F(Selection, RemovesTheSelectedEntryByKey) {
    start();
    drop_movies(paths({"/a", "/b", "/c"}));
    frame->textMovies->SetSelection(1);
    EXPECT_FALSE(key(WXK_DELETE));
    EXPECT_EQ(listed(), paths({"/a", "/c"}));
    frame->textMovies->SetSelection(1);
    EXPECT_FALSE(key(WXK_BACK));
    EXPECT_EQ(listed(), paths({"/a"}));
}

TEST_F(Selection, RemovesNothingWithoutASelectionOrByAnotherKey) {
    start();
    drop_movies(paths({"/a", "/b"}));
    frame->textMovies->SetSelection(wxNOT_FOUND);
    EXPECT_FALSE(key(WXK_DELETE));
    EXPECT_FALSE(key(WXK_BACK));
    frame->textMovies->SetSelection(0);
    EXPECT_TRUE(key(WXK_DOWN));
    EXPECT_TRUE(key('A'));
    EXPECT_EQ(listed(), paths({"/a", "/b"}));
}

TEST_F(Selection, UsesTheFolderOfADroppedFile) {
    start();
    const wxString movie = movies.write("movie.avi");
    EXPECT_TRUE(drop_output(paths({movie, "/x", "/y"})));
    EXPECT_EQ(frame->textOutput->GetValue(), movies.path());
    EXPECT_EQ(stored("Output"), movies.path());
}

TEST_F(Selection, UsesADroppedFolder) {
    start();
    EXPECT_TRUE(drop_output(paths({movies.path()})));
    EXPECT_EQ(frame->textOutput->GetValue(), movies.path());
    EXPECT_EQ(stored("Output"), movies.path());
}

TEST_F(Selection, SavesTheFolderAtEveryChange) {
    start();
    frame->textOutput->SetValue("");
    for (const char letter : {'/', 't', 'm', 'p'}) {
        frame->textOutput->AppendText(letter);
        EXPECT_EQ(stored("Output"), frame->textOutput->GetValue());
    }
    frame->textOutput->SetValue("/m/$HOME/${LANG} %x");
    close();
    start();
    EXPECT_EQ(frame->textOutput->GetValue(), "/m/$HOME/${LANG} %x");
}

TEST_F(Selection, OpensTheFileDialogByButtonAndDoubleClick) {
    start();
    press(frame->buttonMovies);
    double_click(frame->textMovies);
    ASSERT_EQ(dialogs.shown.size(), 2U);
    for (const auto& dialog : dialogs.shown) {
        EXPECT_EQ(dialog.parent, frame);
        EXPECT_TRUE(dialog.style & wxFD_MULTIPLE);
        EXPECT_TRUE(dialog.style & wxRESIZE_BORDER);
    }
    EXPECT_TRUE(listed().empty()) << "a cancelled dialog changes nothing";
    EXPECT_NE(frame->dialogMovies, nullptr);
}

TEST_F(Selection, OpensTheFolderDialogByButtonAndDoubleClick) {
    setting("Output", movies.path());
    start();
    press(frame->buttonOutput);
    double_click(frame->textOutput);
    ASSERT_EQ(dialogs.shown.size(), 2U);
    for (const auto& dialog : dialogs.shown) {
        EXPECT_EQ(dialog.parent, frame);
        EXPECT_TRUE(dialog.style & wxRESIZE_BORDER);
    }
    EXPECT_EQ(frame->textOutput->GetValue(), movies.path());
}

TEST_F(Selection, ChangesNothingDuringARun) {
    start();
    start_run({"a.avi", "b.avi"});
    const wxArrayString before = listed();
    frame->textMovies->SetSelection(0);
    EXPECT_TRUE(drop_movies(paths({"/c.avi"})));
    EXPECT_TRUE(drop_output(paths({movies.path()})));
    key(WXK_DELETE);
    key(WXK_BACK);
    double_click(frame->textMovies);
    double_click(frame->textOutput);
    EXPECT_EQ(listed(), before);
    EXPECT_EQ(frame->textOutput->GetValue(), out.path());
    EXPECT_TRUE(dialogs.shown.empty());
}
