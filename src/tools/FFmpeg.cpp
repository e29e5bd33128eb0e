#include "tools/FFmpeg.h"

#include <wx/app.h>
#include <wx/log.h>
#include <wx/stream.h>
#include <wx/utils.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "convert/Movie.h"
#include "i18n/toolkit_language.h"
#include "protocol/stop_mark.h"
#include "tools/ffmpeg_processes.h"

namespace {

/// The most that one poll reads: a tool that never stops printing must not block the window.
constexpr std::size_t kLongestText = std::size_t{1} << 20U;

/// Between two looks at the processes that are to end.
constexpr unsigned long kRoundMillis = 10;

/// Asks those of `running` to end that are not in `asked`, and adds them: an ffmpeg that another
/// one has just started may have been missed.
void ask_to_end_once(const std::vector<long>& running, std::vector<long>& asked) {
    for (const long pid : running) {
        if (std::find(asked.begin(), asked.end(), pid) == asked.end()) {
            wxKill(pid, wxSIGTERM);
            asked.push_back(pid);
        }
    }
}

void complain_about(const std::vector<long>& processes, long millis) {
    wxString ids;
    for (const long pid : processes)
        ids << " " << pid;
    wxLogWarning("Still running %ld s after they were asked to end, ffmpeg processes%s",
                 millis / 1000, ids);
}

}  // namespace

wxString undecoded(std::string_view bytes) {
    wxString text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        // Widened with its sign, but to 16 bits only: a full-width negative value would be no
        // character at all, and the patterns would then refuse the whole text.
        text += wxUniChar(byte < 0x80 ? byte : 0xFF00 + byte);
    }
    return text;
}

FFmpeg::FFmpeg(Movie* job) : wxProcess(nullptr, wxID_ANY), movie(job) {
    Redirect();
    timer.Bind(wxEVT_TIMER, &FFmpeg::OnTimer, this);
}

void FFmpeg::Run(const wxString& command) {
    stop_mark::remove();  // left by a stop that gave up waiting
    millis = 0;
    watch.Start(0);
    starting = true;
    const UserEnvironment environment;
    SetPid(wxExecute(command, wxEXEC_ASYNC, this));
    starting = false;
}

bool FFmpeg::RunWithUpdates(const wxString& command) {
    Run(command);
    return timer.Start(1000, wxTIMER_CONTINUOUS);
}

void FFmpeg::Stop(std::chrono::milliseconds limit) {
    constexpr long kNoneFound = 1;
    stop_mark::leave();
    std::vector<long> asked = running_ffmpegs();
    const long status = wxExecute("killall ffmpeg", wxEXEC_SYNC);
    const bool missing = status < 0 || status > kNoneFound;
    const long own = GetPid();
    if (missing && own > 0)
        wxKill(own, wxSIGTERM);

    const auto find_left = [&] {
        if (!missing)
            return running_ffmpegs();
        return own > 0 && !child_has_ended(own) ? std::vector{own} : std::vector<long>();
    };
    const wxStopWatch waited;
    std::vector<long> left;
    while (!(left = find_left()).empty()) {
        if (waited.Time() >= limit.count()) {
            complain_about(left, waited.Time());
            return;
        }
        if (!missing)
            ask_to_end_once(left, asked);
        wxAppConsole::GetInstance()->Yield(true);
        wxMilliSleep(kRoundMillis);
    }
    stop_mark::remove();
}

std::string FFmpeg::ReadAvailable(wxInputStream& stream) {
    std::string bytes;
    std::array<char, 4096> piece{};
    // A read returns what is there and waits only when there is nothing.
    while (bytes.size() < kLongestText && stream.CanRead())
        bytes.append(piece.data(), stream.Read(piece.data(), piece.size()).LastRead());
    return bytes;
}

std::string FFmpeg::ReadErrors() {
    if (!IsErrorAvailable())
        return {};
    std::string bytes = ReadAvailable(*GetErrorStream());
    std::fputs(complaints.in(bytes).c_str(), stderr);
    return bytes;
}

wxString FFmpeg::GetLine() {
    return undecoded(ReadErrors());
}

void FFmpeg::OnTimer(wxTimerEvent&) {
    ReportPoll(GetLine());
}

void FFmpeg::OnTerminate(int pid, int status) {
    if (!PostponedEnd(pid, status))
        ReportEnd(GetLine());
}

/// The toolkit reports a child that ends at once from inside wxExecute. That end is delivered from
/// the event loop like every other one: the runner is set up by then, and a long list of such
/// children does not nest their continuations.
bool FFmpeg::PostponedEnd(int pid, int status) {
    if (starting)
        CallAfter([this, pid, status] { OnTerminate(pid, status); });
    return starting;
}

bool FFmpeg::Ended() const {
    return GetPid() == 0 && !reportingEnd;
}

void FFmpeg::StopPolling() {
    timer.Stop();
}

void FFmpeg::ReportPoll(const wxString& text) {
    millis = watch.Time();
    movie->OnFFmpegUpdate(text);
}

void FFmpeg::ReportEnd(const wxString& rest) {
    millis = watch.Time();
    timer.Stop();
    SetPid(0);
    ClosePipes();
    reportingEnd = true;
    movie->OnFFmpegTerminate(rest.empty() ? rest : rest + "\n");
    reportingEnd = false;
}

/// An ended runner stays with its job for the rest of the run; its three pipe ends must not, or a
/// long list would use up the process's file descriptors.
void FFmpeg::ClosePipes() {
    wxDELETE(m_inputStream);
    wxDELETE(m_outputStream);
    wxDELETE(m_errorStream);
}
