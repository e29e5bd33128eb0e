// The web site's answer to the version check.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "fuzz/reference.h"
#include "fuzz/require.h"
#include "web/version_request.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const wxString reply = reply_text(bytes);
    const std::string whole = reply.utf8_string();
    REQUIRE(bytes.starts_with(whole));
    REQUIRE(whole.empty() || bytes.size() - whole.size() <= 3);

    const double version = released_version(reply);
    REQUIRE(!std::isnan(version) && version >= 0.0);
    const auto digits = reference_version(whole);
    REQUIRE(version == (digits ? std::strtod(digits->c_str(), nullptr) : 0.0));
    return 0;
}
