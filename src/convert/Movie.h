#pragma once

#include <wx/string.h>

#include <cstdint>
#include <memory>
#include <vector>

class FFmpeg;
class MP4Box;
class MovieListener;
class Vantreo;

/// One conversion job: a source movie, the folder it goes to and the device it is sized for.
///
/// The frame starts the steps (`Infos`, `Convert`, `Subtitle`), each of which only starts a tool
/// and returns. The tool's runner calls `OnFFmpegUpdate` and `OnFFmpegTerminate`, which hand the
/// job back to the frame. Problems are recorded as translation keys in `error` and `confirm`.
///
/// The job owns its runners, one per step, and frees them with itself; free a job only when it has
/// `Ended`. The frame may not free it inside one of the calls that it makes to the frame.
class Movie {
  public:
    /// `owner` receives all progress and completion calls and is not owned. `device` is the index
    /// of the device choice.
    Movie(Vantreo* owner, const wxString& source, const wxString& folder, int device);
    /// The same for a job that reports to something else. The listener is not owned.
    Movie(MovieListener& owner, const wxString& source, const wxString& folder, int device);
    ~Movie();
    Movie(const Movie&) = delete;
    Movie& operator=(const Movie&) = delete;

    /// Starts the probe. A missing tool is reported to the frame from inside this call, and the
    /// probe is started anyway.
    void Infos();

    /// Reads `infos` and prepares the job: sizes, paths, command lines, `error`, `confirm`.
    void InfosProcess();

    /// Starts the transcode of a probed job.
    void Convert();

    /// Starts adding the subtitles to a transcoded job.
    void Subtitle();

    /// Stops the ffmpeg tool; the job then ignores the end of every tool. During the subtitle step
    /// MP4Box keeps running to its own end.
    void Cancel();

    /// The tool's output since the last poll, possibly empty, possibly cut inside a line.
    void OnFFmpegUpdate(const wxString& line);

    /// The tool has ended; `output` is what it printed since the last poll.
    void OnFFmpegTerminate(const wxString& output);

    /// Text of the remaining time. The frame passes -1, -1, which means the job's own figures;
    /// other values replace `elapsed` in the test whether it is too early for an estimate.
    wxString time_remaining(long elapsed_arg, long percent_arg) const;

    /// "hh:mm:ss", or ">24h" for more than 86400 seconds.
    static wxString seconds_to_duration(long seconds);
    /// Seconds of an "hh:mm:ss" text.
    static long duration_to_seconds(const wxString& text);
    /// Whole seconds in `ms` milliseconds.
    static long millis_to_seconds(long ms);

    /// Detaches the job from the frame, which is about to go: later callbacks do nothing.
    void Detach();

    /// True when no tool runs and no callback is pending.
    bool Ended() const;

    wxString mode;  ///< "" (new), "infos", "convert", "subtitle" or "cancel"
    wxString path;  ///< the source movie
    wxString output_path;
    wxString srt_path;           ///< subtitles beside the source; empty when there are none
    wxString error;              ///< translation key of what stops the job; empty when nothing does
    wxString confirm;            ///< translation key of a question to ask first; empty for none
    std::int32_t percent = 0;    ///< progress, 0 to 100
    float percent_exact = 0.0F;  ///< the same, not rounded
    std::int32_t elapsed = 0;    ///< seconds since the running tool was started
    wxString mp4box_command;     ///< empty when there are no subtitles
    Vantreo* frame = nullptr;    ///< not owned; null once detached
    wxString output_dir;
    std::int32_t optimize;      ///< device index
    wxString infos;             ///< everything the probe printed
    std::int32_t duration = 0;  ///< of the source, in seconds
    std::int32_t height = 0;    ///< of the source, in pixels
    std::int32_t width = 0;
    double fps = 0.0;             ///< of the source, as the probe reported it
    std::int32_t out_height = 0;  ///< of the output, in pixels
    std::int32_t out_width = 0;
    double fps_max = 0.0;  ///< `fps`, at most 30.0; only checks the probe
    wxString ffmpeg_command;
    FFmpeg* ffmpeg = nullptr;  ///< runner of the probe, then of the transcode
    MP4Box* mp4box = nullptr;  ///< runner of the subtitle step

  private:
    bool read_probe();
    void prepare_output();
    void update_transcode(const wxString& line);
    void update_subtitle(const wxString& line);
    void show_progress();
    void finish_step(const FFmpeg& runner);

    template <class Runner>
    Runner* new_runner();

    MovieListener* listener;                       ///< null without a frame, and once detached
    std::vector<std::unique_ptr<FFmpeg>> runners;  ///< every runner that the job has started
    bool endPostponed = false;                     ///< an end waits for a message box to close
};
