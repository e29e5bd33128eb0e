#include "process/program_alias.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#include "core/formatted.h"
#include "protocol/session_folder.h"

namespace bundle {

namespace {

std::string link_in(const std::string& folder, const std::string& program,
                    const std::string& name) {
    std::string path = folder + "/" + name;
    [[maybe_unused]] const int made = ::symlink(program.c_str(), path.c_str());
    std::error_code error;
    return std::filesystem::read_symlink(path, error) == program ? path : "";
}

std::string link_in_session(const std::string& program, const std::string& name) {
    const auto session = session_folder();
    if (!session) {
        return "";
    }
    const std::string folder = *session + formatted("/%zx", std::hash<std::string>()(program));
    ::mkdir(folder.c_str(), S_IRWXU);
    return link_in(folder, program, name);
}

std::string link_in_temporary_folder(const std::string& program, const std::string& name) {
    std::error_code error;
    std::string folder = std::filesystem::temp_directory_path(error) / "vantreo-XXXXXX";
    return !error && ::mkdtemp(folder.data()) != nullptr ? link_in(folder, program, name) : "";
}

}  // namespace

std::string path_of_alias(const std::string& program, const std::string& name) {
    std::string path = link_in_session(program, name);
    path = path.empty() ? link_in_temporary_folder(program, name) : path;
    return path.empty() ? program : path;
}

}  // namespace bundle
