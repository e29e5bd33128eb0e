#pragma once

#include <gtest/gtest.h>
#include <wx/modalhook.h>
#include <wx/string.h>

#include <functional>
#include <vector>

#include "app/Vantreo.h"
#include "support/folder.h"

/// Runs the event loop until `condition` holds; false after `seconds`.
bool wait_until(const std::function<bool()>& condition, double seconds = 10.0);

/// Runs the event loop until no events are pending.
void run_pending_events();

/// Answers every dialog that the program shows, and remembers it.
class DialogAnswers : public wxModalDialogHook {
  public:
    DialogAnswers() { Register(); }

    struct Shown {
        wxString text;     ///< a message's text
        wxString caption;  ///< empty everywhere
        long style;
        wxWindow* parent;
    };

    std::vector<Shown> shown;

    /// The answers to the next dialogs, in order; wxID_CANCEL after the last one.
    std::vector<int> answers;

    /// Called while a dialog counts as open.
    std::function<void()> whileOpen;

  protected:
    int Enter(wxDialog* dialog) override;
};

/// The real frame with doubles for its two tools. The program's folder, the settings and the tools'
/// instructions are fresh for each test.
class FrameTest : public testing::Test {
  protected:
    FrameTest();
    ~FrameTest() override;

    /// Creates and shows the frame as the program does, after writing the settings.
    void start();

    /// Closes the frame and lets the toolkit destroy it.
    void close();

    void setting(const wxString& key, const wxString& value);
    /// The current content of the settings file.
    wxString stored(const wxString& key);

    // ---- the tools' doubles

    void remove_tool(const wxString& name);
    void restore_tool(const wxString& name);
    /// Lets probes report this; by default an ordinary movie of 120 s.
    void report(const wxString& text) { doubles.write("report", text); }
    /// Lets transcodes print this on their error stream.
    void convert_prints(const wxString& text) { doubles.write("convert", text); }
    /// Keeps the transcodes (or "MP4Box": the muxes) running until `release`.
    void hold(const wxString& tool = "ffmpeg");
    void release(const wxString& tool = "ffmpeg");
    /// Command lines of the tools so far; fields are separated by a blank.
    std::vector<wxString> calls();
    /// A short form: "probe a.avi", "convert a.avi" or "mux a.srt".
    std::vector<wxString> steps();
    bool wait_for_steps(size_t count);

    // ---- what a user does

    void press(wxButton* button);
    void add(std::initializer_list<wxString> movies);
    /// Presses Convert with `movies` and waits until the first transcode runs.
    void start_run(std::initializer_list<wxString> movies);
    bool running();

    wxString status();

    Folder program;  ///< the current folder, with Vantreo.app in it
    Folder doubles;  ///< what the tools' doubles read and write
    Folder movies;
    Folder out;
    DialogAnswers dialogs;
    Vantreo* frame = nullptr;
};
