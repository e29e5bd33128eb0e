#pragma once

#include <string>

#include "core/result.h"
#include "core/unique_fd.h"

namespace bundle {

/// A program under another name: a symbolic link in a private folder of its own.
///
/// The system lists a program under the name by which it was started. A script's interpreter opens
/// the link only later, so that this has to live as long as the program. The folder bears a lock
/// until then, by which the next run can tell what a killed one had to leave behind. The destructor
/// removes link and folder.
class ProgramAlias {
  public:
    /// With an empty `name` the program keeps its own, and nothing is made. Else this user's stale
    /// links of that name are removed first.
    static Result<ProgramAlias> create(const std::string& program, const std::string& name);

    ProgramAlias(ProgramAlias&& other) noexcept;
    ProgramAlias& operator=(ProgramAlias&&) = delete;
    ~ProgramAlias();

    /// The path to start the program by.
    const std::string& path() const { return path_; }

  private:
    ProgramAlias(std::string folder, std::string path, UniqueFd lock);

    std::string folder_;  ///< empty: nothing to remove
    std::string path_;
    UniqueFd lock_;
};

}  // namespace bundle
