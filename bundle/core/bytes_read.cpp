#include "core/bytes_read.h"

#include <fstream>
#include <string>

namespace bundle {

std::int64_t bytes_read(pid_t id) {
    std::ifstream file("/proc/" + std::to_string(id) + "/io");
    return bytes_read_in(file);
}

std::int64_t bytes_read_in(std::istream& text) {
    std::string name;
    std::int64_t value = 0;
    while (text >> name >> value) {
        if (name == "rchar:") {
            return value;
        }
    }
    return 0;
}

}  // namespace bundle
