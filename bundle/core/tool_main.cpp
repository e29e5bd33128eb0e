#include "core/tool_main.h"

#include <unistd.h>

#include <exception>

#include "core/console.h"

namespace bundle {

int tool_main(const char* name, int count, char** arguments,
              const std::function<MaybeFailure(const std::vector<std::string>&)>& body) noexcept {
    try {
        const int first = count > 0 ? 1 : 0;
        const auto failure = body(std::vector<std::string>(arguments + first, arguments + count));
        if (!failure) {
            return 0;
        }
        complain(name, failure->details.empty() ? failure->message
                                                : failure->message + "\n" + failure->details);
        return failure->status;
    } catch (const std::exception& error) {
        for (const char* part : {name, ": ", error.what(), "\n"}) {  // allocates nothing
            write_if_ready(STDERR_FILENO, part);
        }
        return kStatusFailed;
    }
}

}  // namespace bundle
