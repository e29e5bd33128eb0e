#include "tools/MP4Box.h"

#include <wx/stream.h>

MP4Box::MP4Box(Movie* job) : FFmpeg(job) {
    // The newest handler is asked first and does not skip, so the base's never sees a tick.
    timer.Bind(wxEVT_TIMER, &MP4Box::OnTimer, this);
}

wxString MP4Box::GetLine() {
    return IsInputAvailable() ? undecoded(ReadAvailable(*GetInputStream())) : wxString();
}

void MP4Box::OnTimer(wxTimerEvent&) {
    ReportPoll(GetLine());
}

void MP4Box::OnTerminate(int pid, int status) {
    if (PostponedEnd(pid, status))
        return;
    ReadErrors();
    ReportEnd(GetLine());
}
