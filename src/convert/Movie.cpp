#include "convert/Movie.h"

#include <wx/filename.h>

#include <algorithm>
#include <utility>

#include "convert/MovieListener.h"
#include "convert/commands.h"
#include "convert/output_folder.h"
#include "convert/output_size.h"
#include "convert/parsers.h"
#include "tools/FFmpeg.h"
#include "tools/MP4Box.h"

namespace {

std::int32_t run_seconds(const FFmpeg& runner) {
    return static_cast<std::int32_t>(Movie::millis_to_seconds(runner.millis));
}

}  // namespace

Movie::Movie(MovieListener& owner, const wxString& source, const wxString& folder, int device)
    : path(source), output_dir(folder), optimize(device), listener(&owner) {}

Movie::~Movie() = default;

template <class Runner>
Runner* Movie::new_runner() {
    auto runner = std::make_unique<Runner>(this);
    Runner* const started = runner.get();
    runners.push_back(std::move(runner));
    return started;
}

// ---- probe --------------------------------------------------------------------------------------

void Movie::Infos() {
    // Each report may show a message; the probe is started in any case.
    if (!wxFileName::FileExists(kFFmpegTool)) {
        error = "error_ffmpeg";
        listener->MovieInfos(this);
    }
    if (!wxFileName::FileExists(kMP4BoxTool)) {
        error = "error_mp4box";
        listener->MovieInfos(this);
    }
    mode = "infos";
    ffmpeg = new_runner<FFmpeg>();
    ffmpeg->Run(probe_command(path));
}

void Movie::InfosProcess() {
    if (!read_probe())
        error = "error_badMovies";
    if (error.empty())
        prepare_output();
}

/// Reads the facts from `infos` and decides the output size; false if it is not a movie.
bool Movie::read_probe() {
    const ProbeFacts facts = parse_probe(infos);
    duration = facts.duration;
    width = facts.width;
    height = facts.height;
    fps = facts.fps;
    fps_max = fps > 30.0 ? 30.0 : fps;
    if (duration == 0 || height == 0 || width == 0 || fps == 0.0)
        return false;

    const FrameSize out = output_size({width, height}, optimize);
    out_width = out.width;
    out_height = out.height;
    return out_width != 0 && out_height != 0;
}

void Movie::prepare_output() {
    if (!is_absolute_folder(output_dir)) {
        error = "error_badOutput";
        return;
    }
    const wxFileName source(path);
    wxFileName output;
    output.Assign(output_dir, source.GetName(), "mp4");
    output_path = output.GetFullPath();
    if (output_path == path) {
        error = "error_MoviesOutputSame";
        return;
    }
    ffmpeg_command = transcode_command(path, fps, {out_width, out_height}, output_path);
    if (wxFileName::FileExists(output_path))
        confirm = "confirmOverwrite";

    wxFileName subtitles;
    subtitles.Assign(source.GetPath(wxPATH_GET_VOLUME), source.GetName(), "srt");
    if (subtitles.FileExists()) {
        srt_path = subtitles.GetFullPath();
        mp4box_command = subtitle_command(srt_path, output_path);
    }
}

// ---- transcode and subtitles --------------------------------------------------------------------

void Movie::Convert() {
    mode = "convert";
    elapsed = 0;
    ffmpeg = new_runner<FFmpeg>();
    ffmpeg->RunWithUpdates(ffmpeg_command);
}

void Movie::Subtitle() {
    mode = "subtitle";
    elapsed = 0;
    mp4box = new_runner<MP4Box>();
    mp4box->RunWithUpdates(mp4box_command);
}

void Movie::Cancel() {
    mode = "cancel";
    ffmpeg->Stop();
}

// ---- what the runners report --------------------------------------------------------------------

void Movie::OnFFmpegUpdate(const wxString& line) {
    if (mode == "convert")
        update_transcode(line);
    else if (mode == "subtitle")
        update_subtitle(line);
}

void Movie::update_transcode(const wxString& line) {
    elapsed = run_seconds(*ffmpeg);
    if (const auto seconds = parse_transcoded_seconds(line)) {
        const float done = static_cast<float>(*seconds) / static_cast<float>(duration);
        percent_exact = std::clamp(100.0F * done, 0.0F, 100.0F);
        percent = static_cast<std::int32_t>(std::clamp(100.0 * done, 0.0, 100.0));
    }
    show_progress();
}

void Movie::update_subtitle(const wxString& line) {
    elapsed = run_seconds(*mp4box);
    percent = parse_muxed_percent(line).value_or(0);
    percent_exact = static_cast<float>(percent);
    show_progress();
}

/// A job without a frame keeps its figures to itself.
void Movie::show_progress() {
    if (listener != nullptr)
        listener->MovieUpdate(this);
}

void Movie::OnFFmpegTerminate(const wxString& output) {
    if (listener == nullptr)
        return;
    endPostponed = true;
    listener->RunUnlessAsking([this, output] {
        endPostponed = false;
        if (mode == "infos") {
            elapsed = run_seconds(*ffmpeg);
            infos = output;
            InfosProcess();
            listener->MovieInfos(this);
        } else if (mode == "convert") {
            finish_step(*ffmpeg);
        } else if (mode == "subtitle") {
            finish_step(*mp4box);
        }
    });
}

void Movie::finish_step(const FFmpeg& runner) {
    elapsed = run_seconds(runner);
    percent = 100;
    show_progress();
    listener->MovieConvert(this);
}

// ---- the end of the job -------------------------------------------------------------------------

void Movie::Detach() {
    mode = "cancel";
    frame = nullptr;
    listener = nullptr;
    endPostponed = false;
    for (auto& runner : runners)
        runner->StopPolling();
}

bool Movie::Ended() const {
    return !endPostponed && std::all_of(runners.begin(), runners.end(),
                                        [](const auto& runner) { return runner->Ended(); });
}
