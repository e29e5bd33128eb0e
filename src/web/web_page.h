#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

/// The first `most` bytes of the page at `address`. Plain http, through the proxy of http_proxy
/// unless no_proxy excludes the server; this machine is always contacted directly. Redirects are
/// not followed: the redirect's own page counts.
///
/// Empty for an error (a status of 400 or above), and if nothing arrives within `limit`, which
/// includes the name look-up. Of an incomplete page, what has arrived by then. Blocks.
std::optional<std::string> beginning_of_page(const std::string& address, std::size_t most,
                                             std::chrono::milliseconds limit);
