#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

/// Runs the system's ffmpeg with these arguments; false when it fails.
bool run_ffmpeg(std::vector<std::string> arguments);

/// Makes a movie of a moving test picture and a tone; `coding` contains the output options. The
/// file's name may be anything.
bool make_movie(const std::string& path, const std::string& size, const std::string& rate,
                const std::string& seconds, const std::vector<std::string>& coding);

/// The usual sample: 2 s of 160x120 at 25 frames per second, MPEG-4 and plain PCM.
bool make_movie(const std::string& path);

/// As above but without sound.
bool make_silent_movie(const std::string& path);

/// A silent MP4 file of a second with a text track named like the tools' own.
bool make_movie_with_subtitles(const std::string& path);

/// What ffprobe reports about the streams and the format, and the packets on request.
nlohmann::json probed(const std::string& path, bool with_packets = false);

/// The one stream of this kind ("video", "audio", "subtitle") in what `probed` returned; null when
/// there is none or more than one.
nlohmann::json only_stream(const nlohmann::json& movie, const std::string& kind);

/// The program's fixed options between the input and "-r" or "-s".
std::vector<std::string> fixed_options();

/// The whole transcode command line of the program for this input, size and output.
std::vector<std::string> transcode_words(const std::string& input, const std::string& size,
                                         const std::string& output);
