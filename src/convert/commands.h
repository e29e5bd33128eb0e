#pragma once

#include <wx/string.h>

#include "convert/output_size.h"

// The tools' command lines. Each path is in double quotes, with its double quotes and backslashes
// escaped, so that the tool gets it unchanged as one argument.

/// The tools, by paths relative to the folder that the program runs in.
extern const char* const kFFmpegTool;
extern const char* const kMP4BoxTool;

/// Reports the facts of `source`.
wxString probe_command(const wxString& source);

/// Transcodes `source` to `output`. `fps` is the source's rate; the output's is limited to 29.97.
wxString transcode_command(const wxString& source, double fps, FrameSize size,
                           const wxString& output);

/// Adds the subtitles of `srt` to the MP4 file `output`, in place.
wxString subtitle_command(const wxString& srt, const wxString& output);
