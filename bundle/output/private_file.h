#pragma once

#include <optional>
#include <string>

#include "core/file_identity.h"
#include "core/result.h"
#include "core/stop_signals.h"
#include "core/unique_fd.h"

namespace bundle {

/// A file in the making: written under a hidden name in the folder of its target, and put in the
/// target's place in one step when it is whole.
///
/// Until then the target stays as it is. The hidden file bears a lock while it is in use, so that
/// the next run can tell what an earlier one had to leave behind. The destructor removes it unless
/// it was published.
class PrivateFile {
  public:
    /// Makes the empty file beside `target` after removing this user's stale ones there. Fails when
    /// the folder can't be written, and when `target` is something else than an ordinary file.
    static Result<PrivateFile> create(const std::string& target);

    PrivateFile(PrivateFile&& other) noexcept;
    PrivateFile& operator=(PrivateFile&&) = delete;
    ~PrivateFile();

    /// Where to write; truncate this file, never replace it. Another place after `renew`.
    const std::string& path() const { return path_; }

    /// Fails to publish unless this is what lies at the target then; empty: nothing.
    void replace_only(const std::optional<FileIdentity>& expected);

    /// Begins anew with an empty file of another name. What may still write to the old one, as the
    /// rest of a program that was ended, does no harm then.
    MaybeFailure renew();

    /// Gives the written file the target's permissions (a new file's when there is none), sees it
    /// onto the disk and puts it in the target's place, which is seen onto the disk too. Fails for
    /// an empty file and when a stop has come. A target that is a symbolic link is itself replaced;
    /// what it leads to stays.
    MaybeFailure publish_whole(const StopSignals& stop);

    /// As above, for a file of any size and whatever stop has come.
    MaybeFailure publish();

    /// The failure of the work on this file, with the file's own trouble as its cause where there
    /// is one: it is no longer where it was made, or takes no more bytes. The system's ffmpeg does
    /// not tell, and ends with success on a full disk.
    Failure explained(Failure failure) const;

    /// What is wrong with the file itself, as above; empty: nothing.
    MaybeFailure trouble() const;

  private:
    PrivateFile(std::string target, std::string path, UniqueFd descriptor);

    MaybeFailure still_there() const;
    MaybeFailure takes_more() const;

    std::string target_;
    std::string path_;  ///< empty: nothing to remove
    UniqueFd descriptor_;
    std::optional<FileIdentity> expected_;
    bool is_bound_ = false;  ///< only what is expected is replaced
};

}  // namespace bundle
