#pragma once

#include <string>

#include "result.h"

namespace bundle {

/// A program under another name: a symbolic link in a private folder of its own.
///
/// The system lists a program under the name by which it was started. The destructor removes link
/// and folder, which a program that has started no longer needs.
class ProgramAlias {
  public:
    /// With an empty `name` the program keeps its own, and nothing is made.
    static Result<ProgramAlias> create(const std::string& program, const std::string& name);

    ProgramAlias(ProgramAlias&& other) noexcept;
    ProgramAlias& operator=(ProgramAlias&&) = delete;
    ~ProgramAlias();

    /// The path to start the program by.
    const std::string& path() const { return path_; }

  private:
    ProgramAlias(std::string folder, std::string path);

    std::string folder_;  ///< empty: nothing to remove
    std::string path_;
};

}  // namespace bundle
