#include "core/cause.h"

#include <cerrno>

namespace bundle {

Cause write_cause(int error) {
    switch (error) {
        case ENOSPC:
        case EDQUOT:
            return Cause::kNoRoom;
        case EROFS:
        case EACCES:
        case EPERM:
            return Cause::kNotWritable;
        case EFBIG:
            return Cause::kTooLarge;
        case ENOENT:
        case ENOTDIR:
        case ENODEV:
        case ENXIO:
            return Cause::kFolderGone;
        case EIO:
        case ESTALE:
            return Cause::kDriveFault;
        default:
            return Cause::kUnknown;
    }
}

Cause read_cause(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return Cause::kMovieGone;
        case EACCES:
        case EPERM:
            return Cause::kMovieForbidden;
        default:
            return Cause::kMovieUnreadable;
    }
}

}  // namespace bundle
