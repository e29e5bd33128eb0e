#pragma once

#include "tools/FFmpeg.h"

/// Runs the MP4Box tool like its base, but reads its standard output, where MP4Box prints its
/// progress: `GetLine`, and so what calls it, hides the base's. `Stop` does not stop it.
class MP4Box : public FFmpeg {
  public:
    explicit MP4Box(Movie* job);

    /// As the base's, from the standard output.
    wxString GetLine();

    void OnTimer(wxTimerEvent& event);
    void OnTerminate(int pid, int status) override;
};
