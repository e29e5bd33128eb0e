#include "output/advice.h"

#include <algorithm>
#include <array>

namespace bundle {

namespace {

struct Entry {
    Cause cause;
    Words words;
};

// The first one is for whatever has no words of its own.
constexpr std::array kWords{
    Entry{Cause::kUnknown,
          {"ffmpeg failed", "Check that the movie plays to its end, and convert it again."}},
    Entry{Cause::kNoRoom,
          {"there is no space left for the MP4 file",
           "Free some space on the drive of the output folder, or choose a folder on another "
           "drive, and convert the movie again."}},
    Entry{Cause::kNotWritable,
          {"the output folder cannot be written to",
           "Choose another output folder, or allow writing in this one, and convert the movie "
           "again."}},
    Entry{Cause::kTooLarge,
          {"the MP4 file is larger than its drive or a limit allows",
           "Choose an output folder on a drive that takes larger files, and convert the movie "
           "again."}},
    Entry{Cause::kFolderGone,
          {"the output folder is gone",
           "Connect its drive again, or choose another output folder, and convert the movie "
           "again."}},
    Entry{Cause::kDriveFault,
          {"the drive of the output folder reports an error",
           "Check the drive and its connection, or choose a folder on another drive, and convert "
           "the movie again."}},
    Entry{Cause::kTargetIsMovie,
          {"the MP4 file would replace the movie itself",
           "Choose another output folder, and convert the movie again."}},
    Entry{Cause::kTargetIsNoFile,
          {"a folder or a device has the name of the MP4 file",
           "Move away what lies there, or choose another output folder, and convert the movie "
           "again."}},
    Entry{Cause::kReplaced,
          {"the MP4 file was replaced or removed meanwhile",
           "Check whether the MP4 file has its subtitles. If not, convert the movie again."}},
    Entry{Cause::kNotMp4,
          {"what lies in the MP4 file's place is something else",
           "Move that away, or choose another output folder, and convert the movie again."}},
    Entry{Cause::kMovieGone,
          {"the movie is not there",
           "Connect its drive again, or look where the movie went, and convert it again."}},
    Entry{Cause::kMovieForbidden,
          {"there is no permission to read the movie",
           "Allow yourself to read the movie, or ask its owner, and convert it again."}},
    Entry{Cause::kMovieUnreadable,
          {"the movie cannot be read",
           "Check the movie's drive and its connection, and convert the movie again."}},
    Entry{Cause::kMovieEmpty,
          {"the movie is an empty file", "Get the movie again: this file has nothing in it."}},
    Entry{Cause::kNoFile, {"it is not a file", "Choose the movie's own file, and convert that."}},
    Entry{Cause::kDriveSilent,
          {"the movie's drive does not answer",
           "Check the drive or the network, and convert the movie again."}},
    Entry{Cause::kNoMovie,
          {"it is not a movie, or too damaged to be read",
           "Check that the file plays. If it does not, get the movie again."}},
    Entry{Cause::kNoPicture,
          {"there is no moving picture in it",
           "Choose a file with a moving picture: sound alone cannot be converted."}},
    Entry{Cause::kNotDecodable,
          {"the system's ffmpeg cannot decode its picture",
           "Install an ffmpeg that knows this kind of movie, or get the movie in another form."}},
    Entry{Cause::kProtected,
          {"it is protected against copying (DRM)",
           "Get a copy without protection: a protected movie cannot be converted."}},
    Entry{Cause::kToolMissing,
          {"ffmpeg or ffprobe is missing on this system",
           "Install ffmpeg, which brings ffprobe too, and convert the movie again."}},
    Entry{Cause::kEnded,
          {"it was ended from outside",
           "Convert the movie again. \"Cancel\" in another window, for instance, ends all "
           "conversions."}},
    Entry{Cause::kStalled,
          {"ffmpeg stopped responding",
           "Check the drives of the movie and of the output folder, and convert the movie "
           "again."}},
    Entry{Cause::kNotUnderstood,
          {"the command line was not understood", "Install Vantreo again: its parts do not fit."}},
    Entry{Cause::kSubtitles,
          {"the subtitle file cannot be read",
           "Replace the subtitle file by one in SubRip form (.srt), and convert the movie again."}},
    Entry{Cause::kNotConverted,
          {"the movie was not converted",
           "Follow the advice on the conversion above, and convert the movie again."}},
};

}  // namespace

Words words_for(Cause cause) {
    const auto* const found = std::find_if(
        kWords.begin(), kWords.end(), [cause](const Entry& entry) { return entry.cause == cause; });
    return found == kWords.end() ? kWords.front().words : found->words;
}

}  // namespace bundle
