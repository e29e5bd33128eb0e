#pragma once

namespace bundle {

/// The kind of a failure, where it is known. The advice to the person depends on it.
enum class Cause {
    kUnknown,
    // The output.
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
    // The conversion.
    kToolMissing,
    kEnded,
    kStalled,
    kNotUnderstood,
    // The subtitles.
    kSubtitles,
    kNotConverted,
};

/// The cause for an errno from writing an output.
Cause write_cause(int error);

/// The cause for an errno from reading a movie.
Cause read_cause(int error);

}  // namespace bundle
