#pragma once

namespace bundle {

/// What kind of trouble a failure is, where that is known. What a person is advised to do depends
/// on it.
enum class Cause {
    kUnknown,
    // Where the MP4 file goes.
    kNoRoom,
    kNotWritable,
    kTooLarge,
    kFolderGone,
    kDriveFault,
    kTargetIsMovie,
    kTargetIsNoFile,
    kReplaced,
    kNotMp4,
    // The movie.
    kMovieGone,
    kMovieForbidden,
    kMovieUnreadable,
    kMovieEmpty,
    kNoFile,
    kDriveSilent,
    kNoMovie,
    kNoPicture,
    kNotDecodable,
    kProtected,
    // The work itself.
    kToolMissing,
    kEnded,
    kStalled,
    kNotUnderstood,
    // The subtitles.
    kSubtitles,
    kNotConverted,
};

/// What an errno means that came from writing an output.
Cause write_cause(int error);

/// What an errno means that came from reading a movie.
Cause read_cause(int error);

}  // namespace bundle
