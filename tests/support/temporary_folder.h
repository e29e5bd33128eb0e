#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A folder with a blank in its name, removed with its content at the end of the test.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// The full path of `name` in the folder.
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const { return path_; }

    /// Writes a file and returns its full path.
    std::string write(const std::string& name, const std::string& content) const;

    /// The names of all entries of the folder, sorted.
    std::vector<std::string> names() const;

  private:
    std::filesystem::path path_;
};

/// The content of a file; empty when it can't be read.
std::string content_of(const std::string& path);
