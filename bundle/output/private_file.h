#pragma once

#include <optional>
#include <string>

#include "core/file_identity.h"
#include "core/result.h"
#include "core/stop_signals.h"
#include "core/unique_fd.h"

namespace bundle {

/// An unfinished file: written under a hidden name in its target's folder, and moved to the
/// target's place in one step when it is complete.
///
/// Until then the target stays as it is. The hidden file is locked while it is in use, so that the
/// next run can remove what a killed one left behind. The destructor removes it unless it was
/// published.
class PrivateFile {
  public:
    /// Creates the empty file beside `target` after removing this user's stale ones there. Fails
    /// when the folder can't be written to and when `target` is anything but an ordinary file.
    static Result<PrivateFile> create(const std::string& target);

    PrivateFile(PrivateFile&& other) noexcept;
    PrivateFile& operator=(PrivateFile&&) = delete;
    ~PrivateFile();

    /// Where to write; truncate this file, never replace it. Changes with `renew`.
    const std::string& path() const { return path_; }

    /// Publishing will fail unless the target then has this identity; empty: does not exist.
    void replace_only(const std::optional<FileIdentity>& expected);

    /// Starts again with an empty file of another name. A process that still writes to the old one
    /// then does no harm.
    MaybeFailure renew();

    /// Gives the file the target's permissions (a new file's if there is none), fsyncs it and its
    /// folder, and renames it to the target. Fails for an empty file and after a stop. A target
    /// that is a symbolic link is replaced itself.
    MaybeFailure publish_whole(const StopSignals& stop);

    /// The same for a file of any size, and even after a stop.
    MaybeFailure publish();

    /// The failure, with `trouble` as its message and cause if there is any. The system's ffmpeg
    /// does not report it, and ends with success on a full disk.
    Failure explained(Failure failure) const;

    /// What is wrong with the file: it was moved or removed, or can't be extended.
    MaybeFailure trouble() const;

  private:
    PrivateFile(std::string target, std::string path, UniqueFd descriptor);

    MaybeFailure still_there() const;
    MaybeFailure takes_more() const;

    std::string target_;
    std::string path_;  ///< empty: nothing to remove
    UniqueFd descriptor_;
    std::optional<FileIdentity> expected_;
    bool is_bound_ = false;  ///< whether `expected_` counts
};

}  // namespace bundle
