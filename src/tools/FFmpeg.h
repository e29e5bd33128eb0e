#pragma once

#include <wx/process.h>
#include <wx/stopwatch.h>
#include <wx/timer.h>

#include <chrono>
#include <string>
#include <string_view>

#include "tools/complaints.h"

class Movie;

/// The longest that a cancel waits for the tools to end.
inline constexpr std::chrono::seconds kStopLimit{5};

/// What a tool printed as the text that the patterns read: each byte becomes one character,
/// undecoded, a byte beyond ASCII one outside the Latin range.
wxString undecoded(std::string_view bytes);

/// Runs the ffmpeg tool as an asynchronous child process and hands what it prints on its error
/// stream to a Movie. Everything happens on the GUI thread; the exit status is ignored.
///
/// Callbacks: after `RunWithUpdates`, `Movie::OnFFmpegUpdate` once a second while the child runs;
/// at the child's end, exactly once, `Movie::OnFFmpegTerminate`. Both come from the event loop,
/// never from inside `Run`. A child that could not be started calls neither. Inside a callback the
/// job may start another runner but must not free this one: its owner frees a runner only once it
/// has `Ended`.
class FFmpeg : public wxProcess {
  public:
    /// `job` is not owned and must outlive the runner.
    explicit FFmpeg(Movie* job);

    /// Starts `command` without polling. The output is read at the end only, so it has to fit into
    /// the pipe's buffer.
    void Run(const wxString& command);

    /// Starts `command` and polls it every 1000 ms. Returns what `wxTimer::Start` returned.
    bool RunWithUpdates(const wxString& command);

    /// Runs "killall ffmpeg", which asks every process named ffmpeg to end, and returns when none
    /// of the user's is left. Those still running after `limit` are listed on the console. Handles
    /// events while it waits, so the caller disables its windows. A stop mark shows the program's
    /// own tools who stops them. MP4Box keeps running. On a system without killall, only the
    /// runner's own child is asked to end and waited for.
    void Stop(std::chrono::milliseconds limit = kStopLimit);

    /// What can be read from the error stream without waiting: any number of lines, and possibly
    /// the beginning of one. At most 1 MiB, for a tool that prints faster than it can be read.
    wxString GetLine();

    void OnTimer(wxTimerEvent& event);
    void OnTerminate(int pid, int status) override;

    /// True when no child runs and no callback is pending.
    bool Ended() const;

    /// Ends the polls; the child's end is still reported.
    void StopPolling();

    long millis = 0;  ///< run time in milliseconds, as of the last poll or of the end

  protected:
    /// What can be read from `stream` without waiting, at most 1 MiB.
    static std::string ReadAvailable(wxInputStream& stream);

    /// What can be read from the error stream without waiting. The tool's complaints in it are
    /// passed on to the program's own error stream: the window shows none of them.
    std::string ReadErrors();

    void ReportPoll(const wxString& text);

    /// Defers an end that is reported from inside wxExecute to the event loop; true if it did.
    bool PostponedEnd(int pid, int status);

    /// Reports the end of the child; `rest` is what it printed since the last poll.
    void ReportEnd(const wxString& rest);

    Movie* movie;
    wxTimer timer;
    wxStopWatch watch;

  private:
    void ClosePipes();

    Complaints complaints;
    bool starting = false;  ///< inside wxExecute
    bool reportingEnd = false;
};
