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
/// stream to a Movie. Everything happens on the GUI thread; the exit status is not looked at.
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
    /// of the user's is left. Those that are left after `limit` are named on the console. The
    /// window takes no input meanwhile, and a mark says to the program's own tools who ends them. A
    /// running MP4Box goes on. On a system without killall only the runner's own child is asked to
    /// end and waited for.
    void Stop(std::chrono::milliseconds limit = kStopLimit);

    /// What can be read from the error stream without waiting: several lines, and the beginning of
    /// one, come as they are. Of a tool that prints faster than it can be read, at most 1 MiB.
    wxString GetLine();

    void OnTimer(wxTimerEvent& event);
    void OnTerminate(int pid, int status) override;

    /// True when no child runs and no callback can come any more.
    bool Ended() const;

    /// No further polls; the child's end still comes.
    void StopPolling();

    long millis = 0;  ///< run time in milliseconds, as of the last poll or of the end

  protected:
    /// What can be read from `stream` without waiting, at most 1 MiB.
    static std::string ReadAvailable(wxInputStream& stream);

    /// What can be read from the error stream without waiting. The tool's complaints in it go on to
    /// the program's own error stream: the window shows none of them.
    std::string ReadErrors();

    void ReportPoll(const wxString& text);

    /// True when this end came too early and will be delivered once more.
    bool PostponedEnd(int pid, int status);

    /// The child has ended and `rest` is what it printed since the last poll.
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
